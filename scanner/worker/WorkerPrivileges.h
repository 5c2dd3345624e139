#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <zetcore/utility/Reason.h>

namespace zetaudiofilterscan {

/// After this call the process, and whatever it starts, can open only local sockets, through which some
/// plug-ins talk to their helpers. On Linux, opening another socket fails with EACCES. The call cannot be
/// undone. It must come while the process has one thread. The result is the reason why the network cannot be
/// refused. The scan goes on all the same.
std::optional<zetcore::utility::Reason> RefuseNetwork();

/// After this call neither the process nor whatever it starts can send a signal to this other process. On
/// Linux that fails with EPERM, as does a signal to every process; on Windows nothing is refused. The call
/// cannot be undone. It must come while the process has one thread. The result is the reason why it cannot be
/// had.
std::optional<zetcore::utility::Reason> RefuseToEnd(std::uint64_t process);

/// After this call neither the process nor whatever it starts can make, change, move or delete files, but in
/// these folders (paths as the system has them); it can read what it could read before. On Linux what is
/// refused fails with EACCES (or EXDEV, when a file would move), and other processes of the user can neither
/// be traced nor, with newer kernels, be sent signals. The call cannot be undone. It must come once, while
/// the process has one thread. `version` is that of `FileGuardVersion`, or an older one. The result is the
/// reason why it cannot be had, or why a folder is refused, too.
std::optional<zetcore::utility::Reason> RefuseWriting(const std::vector<std::string>& except, int version);

/// A part of `RefuseWriting` for kernels that do not know of it: files cannot be made shorter by their name.
std::optional<zetcore::utility::Reason> RefuseTruncation();

} // namespace zetaudiofilterscan
