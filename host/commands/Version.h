#pragma once

#include <string>
#include <string_view>

namespace zetaudiopluginmanager {

/// The number of this version, for example "1.2.3".
std::string VersionNumber();
/// The line of `--version`: program, number, and in brackets the commit, when the sources were in a Git
/// repository while they were built.
std::string VersionLine();
/// The same for any number and commit. An empty commit is left out.
std::string WriteVersionLine(std::string_view number, std::string_view commit);

} // namespace zetaudiopluginmanager
