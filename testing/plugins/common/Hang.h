#pragma once

namespace zettestplugin {

/// Never comes back. The condition is volatile, so that the compiler cannot take the loop for one that ends.
[[gnu::noinline]] inline void Hang()
{
    volatile bool goOn = true;
    while (goOn) {
    }
}

} // namespace zettestplugin
