#include "WorkerDisplay.h"

#include <cstdlib>

namespace zetaudiofilterscan {

namespace {

/// Sets what plug-ins would otherwise make up.
void NameNobodys(const char* variable, const char* nobodys, bool hide)
{
    const char* const value = std::getenv(variable);
    if (hide || !value || !*value)
        ::setenv(variable, nobodys, 1);
}

} // namespace

void ChooseDisplay(bool hide)
{
    // Neither can be a display's: the first has no number, the second is a path that is no socket.
    NameNobodys("DISPLAY", "none", hide);
    NameNobodys("WAYLAND_DISPLAY", "/dev/null", hide);
}

} // namespace zetaudiofilterscan
