#pragma once

namespace zetcore::utility {

/// Returns the process's only `T`, which is made on first use and never destroyed. Threads that the host
/// leaves running may still use it while static objects are destroyed at exit.
template<typename T>
T& Immortal()
{
    static T& object = *new T;
    return object;
}

} // namespace zetcore::utility
