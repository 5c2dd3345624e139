#pragma once

#include <optional>

namespace zetui::skins {

/// The system's own setting, if the toolkit's palette does not follow it; empty when the palette is to be
/// asked.
std::optional<bool> SystemAsksForDark();

} // namespace zetui::skins
