#pragma once

#include <string>
#include <system_error>
#include <vector>

#include <zetcore/Export.h>

namespace zetcore::process {

/// Stands for "/dev/null" among the descriptors of a program.
inline constexpr int nullDevice = -1;

/// A program to be started on a POSIX system.
struct ProgramSpawn
{
    /// Its path, which becomes the first argument, too.
    std::string program;
    std::vector<std::string> arguments;
    /// The program's descriptors 0, 1, 2 and so on are copies of these, and it has no others. They are copied
    /// in this order, so that none of them may have a number that an earlier one takes.
    std::vector<int> descriptors;
};

/// Starts the program with default signals, and with this process's environment and current folder. It gets a
/// session of its own, so that a Ctrl-C in our terminal does not reach it. Returns the number of the process,
/// or sets the error. Any thread.
ZETCORE_API int SpawnProgram(const ProgramSpawn& spawn, std::error_code& error);

} // namespace zetcore::process
