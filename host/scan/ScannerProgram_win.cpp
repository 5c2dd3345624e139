#include "scan/ScannerProgram.h"

#include <windows.h>

#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/filesupport/paths/LongPath.h>

namespace zetaudiopluginmanager {

std::wstring ScannerProgramPath()
{
    return zetaudiopluginhostui::AudioPluginScan::GetScannerProgram().FullPath();
}

ScannerProgramState LookAtScannerProgram()
{
    const std::wstring program = zetcore::filesupport::LongForm(ScannerProgramPath());
    if (::GetFileAttributesW(program.c_str()) == INVALID_FILE_ATTRIBUTES)
        return ScannerProgramState::Missing;
    DWORD kind = 0;
    if (!::GetBinaryTypeW(program.c_str(), &kind))
        return ::GetLastError() == ERROR_ACCESS_DENIED ? ScannerProgramState::NotExecutable
                                                       : ScannerProgramState::OtherSystem;
    return ScannerProgramState::Startable;
}

} // namespace zetaudiopluginmanager
