#pragma once

#include <string_view>

namespace zetaudiopluginhostui {

/// True when the debug-database entry, or the default where there is none, is exactly "true": letter case
/// counts, and "1" is off. Any thread.
bool IsDebugSwitchOn(std::string_view key, std::string_view defaultValue);

} // namespace zetaudiopluginhostui
