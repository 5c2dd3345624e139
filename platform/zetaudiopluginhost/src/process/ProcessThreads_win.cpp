#include "process/ProcessThreads.h"

#include <algorithm>

#include <windows.h>

#include <tlhelp32.h>

#include <zetcore/filesupport/handles/Handle.h>

namespace zetaudiopluginhost {

std::vector<std::uint64_t> ProcessThreads()
{
    std::vector<std::uint64_t> threads;
    const zetcore::filesupport::Handle snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
    if (!snapshot.IsOpen())
        return threads;
    const DWORD process = GetCurrentProcessId();
    THREADENTRY32 entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = Thread32First(snapshot.Get(), &entry); more != FALSE;
         more = Thread32Next(snapshot.Get(), &entry)) {
        if (entry.th32OwnerProcessID == process)
            threads.push_back(entry.th32ThreadID);
    }
    std::sort(threads.begin(), threads.end());
    return threads;
}

} // namespace zetaudiopluginhost
