#pragma once

#include "Interrupt.h"

namespace zetaudiofilterscan {

struct Interrupt::System
{
    /// Readable while set.
    int descriptor = -1;
};

} // namespace zetaudiofilterscan
