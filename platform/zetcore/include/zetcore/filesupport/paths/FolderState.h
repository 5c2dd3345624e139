#pragma once

#include <string>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

enum class FolderState
{
    There,
    /// Nothing is there, or something that is no folder.
    NotFound,
    /// Its drive or its server is away.
    Offline,
};

/// Looks whether a folder is there. That may take long where a server does not answer. Any thread.
ZETCORE_API FolderState LookAtFolder(const std::wstring& path);

} // namespace zetcore::filesupport
