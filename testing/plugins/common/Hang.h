#pragma once

namespace zettestplugin {

/// Never returns. The condition is volatile, so that the compiler cannot assume that the loop ends.
[[gnu::noinline]] inline void Hang()
{
    volatile bool goOn = true;
    while (goOn) {
    }
}

} // namespace zettestplugin
