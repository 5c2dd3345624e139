#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace bench {

/// Finds every `.so` (`.dll`) below the folder. Links are followed. The result is ordered.
std::vector<std::string> FindModules(const std::filesystem::path& folder);

/// These run in a child process, which measures its own time, so that the start of the program does not
/// count. Each prints "RESULT seconds found processor-seconds" and
/// nothing after it.
int RunFloor(const std::vector<std::string>& modules);
int RunScan(const std::vector<std::string>& modules, const std::filesystem::path& prefs,
            bool separateProcess);

} // namespace bench
