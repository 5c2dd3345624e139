#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/filesupport/paths/NativePath.h>

#include "supervisor/process/PrivateFile.h"

namespace zetaudiofilterscan {

bool IsPrivateFile(const zetcore::filesupport::File& file)
{
    struct stat status
    {};
    return ::lstat(zetcore::filesupport::ToNativePath(file.FullPath()).c_str(), &status) == 0 &&
           S_ISREG(status.st_mode) && status.st_uid == ::geteuid() &&
           (status.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace zetaudiofilterscan
