#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

/// The home folder that plug-ins find while they are scanned. It shows the user's own through links, so that
/// they can read their settings. What they make new stays in it and goes with the scan: only this folder can
/// be written to. Windows has none.
namespace zetaudiofilterscan {

/// The command line that makes the scanner remove the home of a supervisor that is gone: `--remove-home
/// SUPERVISOR`.
inline constexpr char removeHomeOption[] = "--remove-home";

/// The place of the home for all workers of this supervisor, in the user's runtime folder. Throws
/// `file_exception`.
std::filesystem::path PluginHomePath(std::uint64_t supervisor);

/// Makes it new. Throws `std::filesystem::filesystem_error`.
void MakePluginHome(const std::filesystem::path& home);

/// Removes it with all that plug-ins have left in it, and nothing that links in it lead to.
void RemovePluginHome(const std::filesystem::path& home) noexcept;

/// Removes the homes of supervisors that do not run any more.
void RemoveAbandonedPluginHomes() noexcept;

/// The environment variables that lead plug-ins there.
std::vector<std::pair<std::string, std::string>> PluginHomeVariables(const std::filesystem::path& home);

} // namespace zetaudiofilterscan
