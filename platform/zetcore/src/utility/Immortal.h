#pragma once

namespace zetcore::utility {

/// The process's one `T`, made on first use and never destroyed: threads that the host leaves running may
/// still use it while static objects go at exit.
template<typename T>
T& Immortal()
{
    static T& object = *new T;
    return object;
}

} // namespace zetcore::utility
