#pragma once

#include <string>

namespace zetaudiopluginmanager {

enum class ScannerProgramState
{
    Missing,
    NotExecutable,
    /// Nothing that this system, or this processor, can start.
    OtherSystem,
    /// As far as can be seen from outside.
    Startable,
};

/// Looks at the scanner program beside this one.
ScannerProgramState LookAtScannerProgram();
std::wstring ScannerProgramPath();

/// Why the scanner could not be started, as far as its program tells; UTF-8.
std::string DescribeFailedStart(ScannerProgramState state, const std::wstring& path);

} // namespace zetaudiopluginmanager
