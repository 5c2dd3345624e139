#pragma once

#include <string>

namespace zetcore::filesupport {

/// A client's display name as the name of one folder: what no file system takes, and what would make it more
/// than one folder, becomes '_'.
std::wstring FolderNameOfClient(const std::wstring& client);

} // namespace zetcore::filesupport
