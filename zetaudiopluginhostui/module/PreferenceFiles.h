#pragma once

#include <string>

#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiopluginhostui {

/// The file of this name in the user's preferences folder.
zetcore::filesupport::File InPrefDir(const std::wstring& name);
/// The registry's.
zetcore::filesupport::File ConfigurationFile();

/// Does work on preferences files; false when the folder does not let it.
template<typename Work>
bool IsAccessibleFor(Work work)
{
    try {
        work();
        return true;
    } catch (const zetcore::filesupport::file_exception&) {
        return false;
    }
}

} // namespace zetaudiopluginhostui
