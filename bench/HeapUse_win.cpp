#include "HeapUse.h"

#include <windows.h>

#define PSAPI_VERSION 2
#include <psapi.h>

namespace bench {

std::size_t HeapUse()
{
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof counters;
    if (!GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                              sizeof counters))
        return 0;
    return counters.PrivateUsage;
}

} // namespace bench
