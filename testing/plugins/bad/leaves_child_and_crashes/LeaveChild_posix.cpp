#include "LeaveChild.h"

#include <unistd.h>

namespace zettestplugin {

void LeaveChild()
{
    int ready[2];
    if (::pipe(ready) != 0)
        return;
    if (::fork() == 0) {
        ::setsid();
        ::close(ready[1]);
        ::close(ready[0]);
        for (;;)
            ::pause();
    }
    // It has left the group, so that a signal to the group does not reach it.
    ::close(ready[1]);
    char byte;
    static_cast<void>(::read(ready[0], &byte, 1));
    ::close(ready[0]);
}

} // namespace zettestplugin
