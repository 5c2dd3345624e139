#include "supervisor/process/PrivateFolder.h"

#include <filesystem>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

#include "supervisor/process/SupervisorProcess.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

PrivateFolder::PrivateFolder()
    : folder(File(zetcore::filesupport::commondirs::RuntimeDir(),
                  L"zetaudiofilterscan-" + zetcore::string::AsciiToUTF16(OwnProcessNumber()))
                 .FullPath())
{
    folder.Create();
}

PrivateFolder::~PrivateFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(zetcore::filesupport::ToNativePath(folder.FullPath()), ignored);
}

} // namespace zetaudiofilterscan
