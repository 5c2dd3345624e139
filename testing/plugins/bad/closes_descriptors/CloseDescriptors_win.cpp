#include "CloseDescriptors.h"

#include <cstdint>

#include <windows.h>

namespace zettestplugin {

void CloseDescriptors()
{
    // Handles are multiples of four.
    for (std::uintptr_t handle = 4; handle <= 4096; handle += 4)
        ::CloseHandle(reinterpret_cast<HANDLE>(handle));
}

} // namespace zettestplugin
