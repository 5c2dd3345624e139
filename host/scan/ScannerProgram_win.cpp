#include "scan/ScannerProgram.h"

#include <windows.h>

#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetaudiopluginmanager {

std::wstring ScannerProgramPath()
{
    return zetcore::filesupport::File(zetcore::filesupport::commondirs::ExecutableDir(),
                                      L"zetaudiofilterscan.exe")
        .FullPath();
}

ScannerProgramState LookAtScannerProgram()
{
    const std::wstring program = ScannerProgramPath();
    if (::GetFileAttributesW(program.c_str()) == INVALID_FILE_ATTRIBUTES)
        return ScannerProgramState::Missing;
    DWORD kind = 0;
    if (!::GetBinaryTypeW(program.c_str(), &kind))
        return ::GetLastError() == ERROR_ACCESS_DENIED ? ScannerProgramState::NotExecutable
                                                       : ScannerProgramState::OtherSystem;
    return ScannerProgramState::Startable;
}

} // namespace zetaudiopluginmanager
