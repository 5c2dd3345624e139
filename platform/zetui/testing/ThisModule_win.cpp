#include "testing/ThisModule.h"

#include <windows.h>

namespace zetui {

utility::ModuleHandle ThisModule()
{
    return ::GetModuleHandleW(nullptr);
}

} // namespace zetui
