#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// Every `.so` (`.dll`) below the folder, links followed, ordered.
std::vector<std::string> FindModules(const std::filesystem::path& folder);

/// What one child process does, timed inside it, so that the start of the program itself is not counted. Each
/// prints "RESULT seconds found" and nothing behind it.
int RunFloor(const std::vector<std::string>& modules);
int RunScan(const std::vector<std::string>& modules, const std::filesystem::path& prefs,
            bool separateProcess);

} // namespace bench
