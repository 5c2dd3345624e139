#include "scan/launch/ScannerProcess.h"

#include <iomanip>
#include <sstream>
#include <system_error>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>
#include <zetcore/filesupport/paths/FileException.h>

namespace zetaudiopluginhostui {

namespace {

namespace filesupport = zetcore::filesupport;

constexpr char startOperation[] = "start the scanner program";
/// Larger codes are the system's own: exceptions, and reasons why a program could not be loaded.
constexpr DWORD largestPlainCode = 0xFFFF;

} // namespace

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
        throw filesupport::file_exception(startOperation, program.FullPath(),
                                          {static_cast<int>(::GetLastError()), std::system_category()});
    const filesupport::Handle thread(started.hThread);
    return {reinterpret_cast<std::uintptr_t>(started.hProcess)};
}

std::optional<ScannerProcessEnd> FindScannerProcessEnd(ScannerProcess process)
{
    const HANDLE handle = reinterpret_cast<HANDLE>(process.handle);
    if (::WaitForSingleObject(handle, 0) == WAIT_TIMEOUT)
        return std::nullopt;
    DWORD code = 0;
    if (!::GetExitCodeProcess(handle, &code))
        return ScannerProcessEnd{};
    std::ostringstream text;
    if (code > largestPlainCode)
        text << "0x" << std::hex << std::setfill('0') << std::setw(8);
    text << code;
    return ScannerProcessEnd{ScannerProcessEnd::How::Exited, text.str(), {}};
}

void EndScannerProcess(ScannerProcess process)
{
    if (!process)
        return;
    const filesupport::Handle handle(reinterpret_cast<HANDLE>(process.handle));
    ::TerminateProcess(handle.Get(), 0);
}

} // namespace zetaudiopluginhostui
