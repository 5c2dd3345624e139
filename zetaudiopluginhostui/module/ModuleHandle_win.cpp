#include "module/ModuleHandle.h"

#include <windows.h>

namespace zetaudiopluginhostui {

zetui::utility::ModuleHandle OwnModuleHandle()
{
    HMODULE module = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                             GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&OwnModuleHandle), &module);
    return module;
}

} // namespace zetaudiopluginhostui
