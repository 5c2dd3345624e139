#pragma once

#include <optional>

namespace zetui::skins {

/// The system's own setting, if the toolkit's palette does not follow it. Otherwise empty, and the palette
/// tells.
std::optional<bool> SystemAsksForDark();

} // namespace zetui::skins
