#include "scan/launch/ScannerPlace.h"

#include <windows.h>

#include <zetcore/filesupport/paths/NativePath.h>

namespace zetaudiopluginhostui {

std::wstring OwnLibraryFolder()
{
    HMODULE module = nullptr;
    if (!::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                  GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                              reinterpret_cast<LPCWSTR>(&OwnLibraryFolder), &module))
        return {};
    std::wstring library(MAX_PATH, L'\0');
    for (;;) {
        const DWORD length = ::GetModuleFileNameW(module, library.data(), static_cast<DWORD>(library.size()));
        if (length == 0)
            return {};
        if (length < library.size()) {
            library.resize(length);
            namespace filesupport = zetcore::filesupport;
            return filesupport::FromNativePath(filesupport::ToNativePath(library).parent_path());
        }
        library.resize(library.size() * 2);
    }
}

} // namespace zetaudiopluginhostui
