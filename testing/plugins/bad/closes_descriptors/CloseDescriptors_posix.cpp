#include "CloseDescriptors.h"

#include <unistd.h>

namespace zettestplugin {

void CloseDescriptors()
{
    for (int descriptor = 0; descriptor <= 1024; ++descriptor)
        ::close(descriptor);
}

} // namespace zettestplugin
