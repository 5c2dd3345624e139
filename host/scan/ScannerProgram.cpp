#include "scan/ScannerProgram.h"

#include "terminal/DisplayText.h"

namespace zetaudiopluginmanager {

std::string DescribeFailedStart(ScannerProgramState state, const std::wstring& path)
{
    const std::string program = ForTerminal(path);
    switch (state) {
    case ScannerProgramState::Missing:
        return "there is no scanner program: " + program;
    case ScannerProgramState::NotExecutable:
        return "the scanner program may not be executed: " + program;
    case ScannerProgramState::OtherSystem:
        return "the scanner program is none for this system: " + program;
    case ScannerProgramState::Startable:
        break;
    }
    return "the scanner program ended, or did not say where it listens, or could not be reached there: " +
           program;
}

} // namespace zetaudiopluginmanager
