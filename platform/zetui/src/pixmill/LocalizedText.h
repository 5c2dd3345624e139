#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <QString>

/// The toolkit's own texts in the language of the window. Main thread.
namespace zetui::pixmill {

/// The text of the key, which ends with the text itself in English, with its arguments in place.
QString LocalizedText(std::string_view key, const std::vector<std::wstring>& arguments = {});

} // namespace zetui::pixmill
