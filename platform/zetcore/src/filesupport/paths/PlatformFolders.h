#pragma once

#include <string>

/// The folders in which this system keeps things. Empty when there is no such folder.
namespace zetcore::filesupport {

std::wstring FindExecutableFolder();
std::wstring FindHomeFolder();
/// The folder in which every program has its preferences folder.
std::wstring FindConfigFolder();
/// Makes the folder when it has to. Throws `file_exception`.
std::wstring FindRuntimeFolder();

} // namespace zetcore::filesupport
