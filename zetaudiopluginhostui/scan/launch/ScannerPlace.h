#pragma once

#include <string>

#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginhostui {

/// The place of the scanner program. A folder that is set here, or else the folder that
/// `commondirs::SetExecutableDir` set, is the only one. Otherwise the program is looked for beside the
/// running program, beside this library, and where the installation puts programs. Where it is nowhere, the
/// place beside the running program is named. Any thread.
zetcore::filesupport::File FindScannerProgram();
/// A relative path is made absolute at once. An empty one goes back to the search.
void SetScannerFolder(const std::wstring& path);

/// The folder of the file that this code is loaded from, with links followed. Empty when it is not known.
std::wstring OwnLibraryFolder();

} // namespace zetaudiopluginhostui
