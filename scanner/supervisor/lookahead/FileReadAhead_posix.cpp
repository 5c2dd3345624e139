#include <fcntl.h>
#include <sys/stat.h>

#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/filesupport/paths/NativePath.h>

#include "supervisor/lookahead/FileReadAhead.h"

namespace zetaudiofilterscan {

void ReadFileAhead(const std::wstring& path)
{
    // Opening a pipe must not wait for its writer.
    const zetcore::filesupport::Descriptor file(
        ::open(zetcore::filesupport::ToNativePath(path).c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status
    {};
    if (file.IsOpen() && ::fstat(file.Get(), &status) == 0 && S_ISREG(status.st_mode))
        ::posix_fadvise(file.Get(), 0, mostBytesAhead, POSIX_FADV_WILLNEED);
}

} // namespace zetaudiofilterscan
