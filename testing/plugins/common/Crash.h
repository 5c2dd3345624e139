#pragma once

namespace zettestplugin {

/// A write that the system refuses: SIGSEGV, or an access violation. Pointer and target are volatile, so that
/// the compiler neither drops the write nor puts a trap of its own in its place.
[[gnu::noinline]] inline void Crash()
{
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
}

} // namespace zettestplugin
