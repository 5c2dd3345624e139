#pragma once

#include <string>

/// The folders in which this system keeps things. A path is empty when there is no such folder.
namespace zetcore::filesupport {

std::wstring FindExecutableFolder();
std::wstring FindHomeFolder();
/// The folder in which every program has its preferences folder.
std::wstring FindConfigFolder();
/// Makes the folder when it is not there. Throws `file_exception`.
std::wstring FindRuntimeFolder();

/// Makes the name of one folder from a client's display name. Characters that no file system takes, or that
/// would make it more than one folder, become '_'.
std::wstring FolderNameOfClient(const std::wstring& client);

} // namespace zetcore::filesupport
