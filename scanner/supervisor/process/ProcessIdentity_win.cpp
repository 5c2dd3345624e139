#include "supervisor/process/ProcessIdentity.h"

#include <windows.h>

#include <tlhelp32.h>

#include <zetcore/filesupport/handles/Handle.h>

namespace zetaudiofilterscan {

using zetcore::filesupport::Handle;

namespace {

std::optional<std::uint64_t> StartOf(HANDLE process)
{
    FILETIME created{}, exited{}, kernel{}, user{};
    if (!GetProcessTimes(process, &created, &exited, &kernel, &user))
        return std::nullopt;
    return std::uint64_t{created.dwHighDateTime} << 32 | created.dwLowDateTime;
}

std::optional<DWORD> ParentNumber()
{
    const Handle processes(CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    if (!processes.IsOpen())
        return std::nullopt;
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof entry;
    for (BOOL more = Process32FirstW(processes.Get(), &entry); more;
         more = Process32NextW(processes.Get(), &entry)) {
        if (entry.th32ProcessID == GetCurrentProcessId())
            return entry.th32ParentProcessID;
    }
    return std::nullopt;
}

} // namespace

std::optional<ProcessIdentity> IdentifyProcess(std::uint64_t number)
{
    const Handle process(
        OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION | SYNCHRONIZE, FALSE, static_cast<DWORD>(number)));
    // An ended process keeps its number as long as somebody has a handle to it.
    if (!process.IsOpen() || WaitForSingleObject(process.Get(), 0) == WAIT_OBJECT_0)
        return std::nullopt;
    const std::optional<std::uint64_t> start = StartOf(process.Get());
    if (!start)
        return std::nullopt;
    return ProcessIdentity{number, *start};
}

std::optional<ProcessIdentity> IdentifyHost(std::uint64_t)
{
    const std::optional<DWORD> parent = ParentNumber();
    const std::optional<std::uint64_t> ownStart = StartOf(GetCurrentProcess());
    if (!parent || !ownStart)
        return std::nullopt;
    const std::optional<ProcessIdentity> host = IdentifyProcess(*parent);
    // Another process that has got the number of the ended parent began later than its child.
    return host && host->start <= *ownStart ? host : std::nullopt;
}

} // namespace zetaudiofilterscan
