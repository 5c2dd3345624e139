#pragma once

#include <string>

namespace zetaudiopluginmanager {

enum class ScannerProgramState
{
    Missing,
    NotExecutable,
    /// A file that this system or this processor cannot start.
    OtherSystem,
    /// The file looks like a program that this system can start.
    Startable,
};

/// Looks at the file of the scanner program, which lies beside this program.
ScannerProgramState LookAtScannerProgram();
std::wstring ScannerProgramPath();

/// Says why the scanner could not be started, as far as its program file shows. UTF-8.
std::string DescribeFailedStart(ScannerProgramState state, const std::wstring& path);

} // namespace zetaudiopluginmanager
