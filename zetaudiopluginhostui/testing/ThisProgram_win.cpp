#include "testing/ThisProgram.h"

#include <windows.h>

namespace zetaudiopluginhostui {

zetui::utility::ModuleHandle HandleOfThisProgram()
{
    return ::GetModuleHandleW(nullptr);
}

} // namespace zetaudiopluginhostui
