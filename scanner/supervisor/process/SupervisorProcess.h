#pragma once

#include <cstdint>

namespace zetaudiofilterscan {

/// Keeps signals that are meant for the host from ending the scanner: those that a terminal sends to all of
/// its programs (the host ends the scanner itself), and a broken pipe.
void SetUpSupervisorProcess();

/// True for a signal by which users, terminals and service managers ask programs to end. It is the host's
/// matter, whichever of the processes gets it first. Windows has none: there, only the host is asked.
bool AsksToEnd(std::int64_t signal);

/// Takes from this process, and from the workers that it will start, what they do not need: no privileges can
/// be gained; there is no memory image, which could hold the host's paths, and no error dialog; on Linux,
/// open files and processes are bounded, widely enough for any plug-in, and not for one that runs wild. What
/// cannot be had is traced.
void GiveUpPrivileges();

/// Ends the process at once. Connections close, nothing is answered any more, no thread is waited for.
[[noreturn]] void EndSupervisorProcess(int exitCode);

} // namespace zetaudiofilterscan
