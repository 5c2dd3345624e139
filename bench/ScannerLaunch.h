#pragma once

#include <filesystem>

namespace bench {

/// Starts the scanner as the host does. Returns the seconds until it has answered "Connect". Throws when that
/// fails.
double SecondsToConnect(const std::filesystem::path& scanner, const std::filesystem::path& prefs);

} // namespace bench
