#pragma once

namespace zettestplugin {

/// Writes where the system refuses it: SIGSEGV, or an access violation. Pointer and target are volatile, so
/// that the compiler neither drops the write nor replaces it by a trap of its own.
[[gnu::noinline]] inline void Crash()
{
    volatile int* volatile nowhere = nullptr;
    *nowhere = 1;
}

} // namespace zettestplugin
