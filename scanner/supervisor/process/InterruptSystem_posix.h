#pragma once

#include <algorithm>
#include <chrono>

#include <zetcore/filesupport/handles/Descriptor.h>

#include "supervisor/process/Interrupt.h"

namespace zetaudiofilterscan {

struct Interrupt::System
{
    /// Readable while set.
    zetcore::filesupport::Descriptor descriptor;
};

/// The milliseconds until the deadline for `poll`, rounded up so that it does not spin before it; at most a
/// minute, so callers look at the clock themselves.
inline int PollTimeout(std::chrono::steady_clock::time_point deadline)
{
    using namespace std::chrono;
    const auto left = ceil<milliseconds>(deadline - steady_clock::now());
    return static_cast<int>(std::clamp<milliseconds::rep>(left.count(), 0, 60000));
}

} // namespace zetaudiofilterscan
