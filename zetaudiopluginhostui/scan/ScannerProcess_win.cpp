#include "scan/ScannerProcess.h"

#include <windows.h>

namespace zetaudiopluginhostui {

std::wstring ScannerFileName()
{
    return L"zetaudiofilterscan.exe";
}

ScannerProcess StartScannerProcess(const zetcore::filesupport::File& program)
{
    wchar_t noArguments[1] = {};
    STARTUPINFOW startup = {};
    startup.cb = sizeof startup;
    static_assert(sizeof startup == 104);
    PROCESS_INFORMATION started = {};
    if (!::CreateProcessW(program.FullPath().c_str(), noArguments, nullptr, nullptr, FALSE, CREATE_NO_WINDOW,
                          nullptr, nullptr, &startup, &started))
        return {};
    ::CloseHandle(started.hThread);
    return {reinterpret_cast<std::uintptr_t>(started.hProcess)};
}

void EndScannerProcess(ScannerProcess process)
{
    if (!process)
        return;
    const HANDLE handle = reinterpret_cast<HANDLE>(process.handle);
    ::TerminateProcess(handle, 0);
    ::CloseHandle(handle);
}

} // namespace zetaudiopluginhostui
