#pragma once

#include <memory>

#include <sys/types.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>

#include "WorkerPage.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

struct UnmapPage
{
    void operator()(WorkerPage* page) const noexcept;
};

/// A worker in a session of its own, with default signals and nothing open but standard input (empty),
/// output, error, the channel and the page. Our ends do not block.
struct SpawnedWorker
{
    /// The group and the session have the same number.
    pid_t pid = -1;
    /// Readable when the process has ended. It is closed where the system has no such descriptor.
    Descriptor process;
    Descriptor channel;
    Descriptor output;
    std::unique_ptr<WorkerPage, UnmapPage> page;
};

} // namespace zetaudiofilterscan
