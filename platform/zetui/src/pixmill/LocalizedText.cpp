#include "pixmill/LocalizedText.h"

#include <zetcore/config/Localizer.h>

#include "pixmill/QtConversions.h"

namespace zetui::pixmill {

QString LocalizedText(std::string_view key, const std::vector<std::wstring>& arguments)
{
    return ToQString(zetcore::config::Localizer::Get().LocalizeWide(key, arguments));
}

} // namespace zetui::pixmill
