#pragma once

namespace zettestplugin {

/// A write that the system refuses: SIGSEGV, or an access violation. The pointer is volatile, so that the
/// compiler cannot see where it leads and put a trap of its own there.
[[gnu::noinline]] inline void Crash()
{
    int* volatile nowhere = nullptr;
    *nowhere = 1;
}

} // namespace zettestplugin
