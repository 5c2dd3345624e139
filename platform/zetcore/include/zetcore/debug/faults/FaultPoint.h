#pragma once

#include <chrono>
#include <string_view>
#include <system_error>

#include <zetcore/Export.h>
#include <zetcore/debug/faults/FaultConfiguration.h>

/// Named places at which tests make the program fail, so that what a crash, a kill or a full disk leaves
/// behind can be tried at every step of it. They are compiled in with the CMake option `ZET_FAULT_POINTS`
/// only, which no package has: without it the functions do nothing, and no place's name is in the programs.
///
/// Nothing happens at a place, and it costs no more than a look at a flag, unless the environment variable
/// `ZET_FAULT` is set when the first place is reached: `PLACE:VISIT:ACTION`, several separated by `;`. PLACE
/// is a name below, or the beginning of one followed by `*`; VISIT counts the visits of this process.
///
///     stop       at that visit: announces itself and stops until somebody continues or kills it. Only the
///                first process to come so far does: the announcement ("PLACE NUMBER\n", NUMBER the
///                process's) goes to the named pipe `ZET_FAULT_PIPE`, which is renamed to `<name>.taken`
///                first. POSIX systems only
///     kill       at that visit: ends the process as a kill does
///     no-space   from that visit on: `FaultError` gives that there is no space left
///     read-only  from that visit on: `FaultError` gives that the file system is read-only
///     denied     from that visit on: `FaultError` gives that the permission is denied
///     late=N     from that visit on: `FaultDelay` gives N seconds
///
/// Files that are replaced have the places `write.FILENAME.open`, `.write`, `.rename` and `.done`, files that
/// are appended to `append.FILENAME.write` and `.done`, both on POSIX systems. A file that is deleted has
/// `delete.FILENAME`, the library of a plug-in that is looked into `read.FILENAME`, and so has a folder that
/// is searched for plug-ins. The others are where they are called. Any thread.
namespace zetcore::debug {

#if ZET_FAULT_POINTS

/// True when any place is set. Callers that would have to make up a name ask first.
ZETCORE_API bool FaultsAreOn();
ZETCORE_API void FaultPoint(std::string_view place);
/// Visits the place. Returns the error that the caller shall behave as if the system had given it, else none.
ZETCORE_API std::error_code FaultError(std::string_view place);
/// Visits the place. Returns how much later than it is the caller shall think it is.
ZETCORE_API std::chrono::seconds FaultDelay(std::string_view place);
/// Reads the environment again; for tests, while nothing else runs.
ZETCORE_API void ResetFaults();

#else

inline bool FaultsAreOn()
{
    return false;
}
inline void FaultPoint(std::string_view) {}
inline std::error_code FaultError(std::string_view)
{
    return {};
}
inline std::chrono::seconds FaultDelay(std::string_view)
{
    return {};
}

#endif

} // namespace zetcore::debug
