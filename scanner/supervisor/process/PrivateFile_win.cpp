#include <filesystem>
#include <system_error>

#include <zetcore/filesupport/paths/NativePath.h>

#include "supervisor/process/PrivateFile.h"

namespace zetaudiofilterscan {

// The access list of the user's temporary folder keeps others out.
bool IsPrivateFile(const zetcore::filesupport::File& file)
{
    std::error_code error;
    const std::filesystem::directory_entry entry(zetcore::filesupport::ToNativePath(file.FullPath()), error);
    return !error && entry.is_regular_file(error) && !zetcore::filesupport::IsLink(entry);
}

} // namespace zetaudiofilterscan
