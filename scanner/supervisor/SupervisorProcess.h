#pragma once

#include <string>

namespace zetaudiofilterscan {

/// Keeps signals that are meant for the host from ending the scanner: those that a terminal sends to all of
/// its programs (the host ends the scanner itself), and a broken pipe.
void SetUpSupervisorProcess();

/// The number that the system gives this process.
std::string OwnProcessNumber();

/// Ends the process at once. Connections close, nothing is answered any more, no thread is waited for.
[[noreturn]] void EndSupervisorProcess(int exitCode);

} // namespace zetaudiofilterscan
