#include "module/ModuleHandle.h"

#include <dlfcn.h>

namespace zetaudiopluginhostui {

zetui::utility::ModuleHandle OwnModuleHandle()
{
    Dl_info info{};
    return ::dladdr(reinterpret_cast<const void*>(&OwnModuleHandle), &info) ? info.dli_fbase : nullptr;
}

} // namespace zetaudiopluginhostui
