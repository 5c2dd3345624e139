#include "scan/launch/ScannerPlace.h"

#include <dlfcn.h>

#include <filesystem>
#include <system_error>

#include <zetcore/filesupport/paths/NativePath.h>

namespace zetaudiopluginhostui {

std::wstring OwnLibraryFolder()
{
    Dl_info info{};
    if (!::dladdr(reinterpret_cast<const void*>(&OwnLibraryFolder), &info) || !info.dli_fname)
        return {};
    std::error_code error;
    const std::filesystem::path library = std::filesystem::canonical(info.dli_fname, error);
    return error ? std::wstring() : zetcore::filesupport::FromNativePath(library.parent_path());
}

} // namespace zetaudiopluginhostui
