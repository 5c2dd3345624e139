#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>

#include <zetcore/filesupport/handles/Descriptor.h>

namespace zetaudiofilterscan {

// The messages between a supervisor and a process that makes copies of itself
// (`WorkerArguments::makesCopies`), over a socket that keeps messages apart. There is one answer for each
// request, and one before the first request, which says that the process is ready.

/// Asks for a copy: one byte, with the copy's descriptors beside it.
class CopyRequest
{
  public:
    /// Of the copy: its output, its end of its channel, and its page.
    static constexpr std::size_t count = 3;

    /// Does not wait. False, with `errno`, when it cannot be sent.
    static bool Send(int socket, const std::array<int, count>& descriptors);
    /// Waits for one. The descriptors are above those of a worker. Empty when the other side is closed, and
    /// when something else came. Throws `std::system_error` when there is no room for them.
    static std::optional<std::array<zetcore::filesupport::Descriptor, count>> Receive(int socket);
};

struct CopyAnswer
{
    /// The copy's process, which is a child of the supervisor. 0 when there is none.
    std::int32_t process = 0;
    /// The system's error number; 0 when nothing failed.
    std::int32_t error = 0;

    /// False when it cannot be sent.
    bool Send(int socket) const;
    /// Waits for so long. Empty when none has come, or the other side is closed.
    static std::optional<CopyAnswer> Receive(int socket, int waitMilliseconds);
};

} // namespace zetaudiofilterscan
