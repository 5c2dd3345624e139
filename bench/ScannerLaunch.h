#pragma once

#include <filesystem>

namespace bench {

/// Starts the scanner as the host does, and returns the seconds until its answer to "Connect" is there.
/// Throws when it fails.
double SecondsToConnect(const std::filesystem::path& scanner, const std::filesystem::path& prefs);

} // namespace bench
