#include "supervisor/process/PrivateFile.h"

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiofilterscan {

using zetcore::filesupport::File;
using zetcore::filesupport::FileUtils;

std::string ReadPrivateFile(const File& file, std::uint64_t maxBytes)
{
    // The folder is this user's alone, so that nobody exchanges the file after the look.
    if (!IsPrivateFile(file))
        throw zetcore::filesupport::file_exception("read", file.FullPath(),
                                                   std::make_error_code(std::errc::permission_denied));
    return FileUtils::ReadFile(file, maxBytes);
}

void WritePrivateFile(const File& file, const std::string& bytes)
{
    // A new file is private; an existing one would keep its permissions, and a link would be followed.
    file.Delete();
    FileUtils::ReplaceContent(file.FullPath(), bytes, zetcore::filesupport::Durability::Handover);
}

} // namespace zetaudiofilterscan
