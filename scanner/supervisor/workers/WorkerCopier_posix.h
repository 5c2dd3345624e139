#pragma once

#include <array>
#include <optional>

#include <sys/types.h>

#include <zetcore/filesupport/handles/Descriptor.h>

#include "CopyMessages_posix.h"

namespace zetaudiofilterscan {

/// The process of this program that makes copies of itself (`MakeCopies`), and the socket to it. Scanning
/// thread.
class WorkerCopier
{
  public:
    /// Starts it and does not wait until it is ready. Throws `std::system_error`.
    WorkerCopier();
    /// Kills it. Its copies live on.
    ~WorkerCopier();
    WorkerCopier(const WorkerCopier&) = delete;
    WorkerCopier& operator=(const WorkerCopier&) = delete;

    /// False as long as it is still starting, and for ever once a copy has failed. It does not wait.
    bool IsReady();
    /// A new child of this process, with these as its output, channel and page. Empty when there is none,
    /// which is traced.
    std::optional<pid_t> Copy(const std::array<int, CopyRequest::count>& descriptors);

  private:
    void GiveUp(int error);

    zetcore::filesupport::Descriptor channel;
    pid_t process = -1;
    bool isReady = false;
};

} // namespace zetaudiofilterscan
