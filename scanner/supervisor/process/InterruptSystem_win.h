#pragma once

#include <algorithm>
#include <chrono>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>

#include "supervisor/process/Interrupt.h"

namespace zetaudiofilterscan {

struct Interrupt::System
{
    /// A manual-reset event.
    zetcore::filesupport::Handle event;
};

/// The milliseconds until the deadline for a wait, rounded up so that it does not spin before it; at most a
/// minute, so callers look at the clock themselves.
inline DWORD WaitTimeout(std::chrono::steady_clock::time_point deadline)
{
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(deadline - steady_clock::now());
    return static_cast<DWORD>(std::clamp<milliseconds::rep>(left.count(), 0, 60000));
}

} // namespace zetaudiofilterscan
