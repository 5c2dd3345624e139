#pragma once

#include <iosfwd>
#include <string>
#include <vector>

namespace zetaudiopluginmanager {

/// The whole program: it reads the arguments (UTF-8, without the program's name), carries out the command and
/// returns the exit status. The command prints to `output`. Messages go to standard error. Main thread.
int RunCommandLine(const std::vector<std::string>& arguments, std::ostream& output);

} // namespace zetaudiopluginmanager
