#include "testing/ThisModule.h"

#include <dlfcn.h>

namespace zetui {

utility::ModuleHandle ThisModule()
{
    static const int inThisProgram = 0;
    Dl_info info{};
    return ::dladdr(&inThisProgram, &info) ? info.dli_fbase : nullptr;
}

} // namespace zetui
