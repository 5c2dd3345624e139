#pragma once

#include <windows.h>

#include "Interrupt.h"

namespace zetaudiofilterscan {

struct Interrupt::System
{
    /// A manual-reset event.
    HANDLE event = nullptr;
};

} // namespace zetaudiofilterscan
