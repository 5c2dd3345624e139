#pragma once

#include <filesystem>
#include <string>

namespace bench {

/// Runs a command of the system's shell and returns what it writes to standard output. What it writes to
/// standard error is dropped. Throws `std::runtime_error` when it cannot be started or fails.
std::string CommandOutput(const std::string& command);

/// The path as one word of such a command.
std::string Quoted(const std::filesystem::path& path);

} // namespace bench
