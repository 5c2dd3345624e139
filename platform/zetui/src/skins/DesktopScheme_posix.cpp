#include "skins/DesktopScheme.h"

namespace zetui::skins {

// The desktop's platform theme gives the application its palette.
std::optional<bool> SystemAsksForDark()
{
    return std::nullopt;
}

} // namespace zetui::skins
