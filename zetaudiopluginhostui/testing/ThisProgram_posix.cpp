#include "testing/ThisProgram.h"

#include <dlfcn.h>

namespace zetaudiopluginhostui {

zetui::utility::ModuleHandle HandleOfThisProgram()
{
    static const int inThisProgram = 0;
    Dl_info info{};
    return ::dladdr(&inThisProgram, &info) ? info.dli_fbase : nullptr;
}

} // namespace zetaudiopluginhostui
