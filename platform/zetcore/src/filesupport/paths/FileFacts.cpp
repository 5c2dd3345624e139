#include <zetcore/filesupport/paths/FileFacts.h>

#include <system_error>

#include <zetcore/filesupport/paths/NativePath.h>

#include "filesupport/paths/FileStatus.h"

namespace zetcore::filesupport {

std::optional<FileFacts> FindFileFacts(const File& file)
{
    std::error_code error;
    const FileStatus status = ReadFileStatus(ToNativePath(file.FullPath()), error);
    if (error || status.kind != FileKind::Regular)
        return std::nullopt;
    return FileFacts{status.size, status.modificationTime};
}

} // namespace zetcore::filesupport
