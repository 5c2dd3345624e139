#include "supervisor/process/SystemMemory.h"

#include <windows.h>

namespace zetaudiofilterscan {

SystemMemory GetSystemMemory()
{
    MEMORYSTATUSEX status = {};
    status.dwLength = sizeof status;
    if (!::GlobalMemoryStatusEx(&status))
        return {};
    return {status.ullTotalPhys, status.ullAvailPhys};
}

} // namespace zetaudiofilterscan
