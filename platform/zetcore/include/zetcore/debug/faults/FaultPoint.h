#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <system_error>

#include <zetcore/Export.h>

/// Named places at which tests make the program fail, so that what a crash, a kill or a full disk leaves
/// behind can be tried at every step of it. Off, and then no more than a look at a flag, unless the
/// environment variable `ZET_FAULT` is set when the first place is reached: `PLACE:VISIT:ACTION`, several
/// separated by `;`. PLACE is a name below, or the beginning of one followed by `*`; VISIT counts the visits
/// of this process.
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

/// True when any place is set: for callers that would have to make up a name.
ZETCORE_API bool FaultsAreOn();
ZETCORE_API void FaultPoint(std::string_view place);
/// A visit of the place; the error that the caller shall behave as if the system had given it, else none.
ZETCORE_API std::error_code FaultError(std::string_view place);
/// A visit of the place; how much later than it is the caller shall think it is.
ZETCORE_API std::chrono::seconds FaultDelay(std::string_view place);
/// The environment is read again; for tests, while nothing else runs.
ZETCORE_API void ResetFaults();

} // namespace zetcore::debug
