#pragma once

#include <optional>

namespace zetui::skins {

/// What the system's own setting says where the toolkit's palette does not follow it; nothing where the
/// palette is to be asked.
std::optional<bool> SystemAsksForDark();

} // namespace zetui::skins
