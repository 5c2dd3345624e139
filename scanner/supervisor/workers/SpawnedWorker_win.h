#pragma once

#include <cstdint>
#include <memory>
#include <utility>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>

#include "WorkerPage.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Handle;

struct UnmapPage
{
    void operator()(WorkerPage* page) const noexcept { ::UnmapViewOfFile(page); }
};

/// A worker without a window, in a job of its own, which has inherited nothing but standard input (empty),
/// output, error, the channel and the page.
struct SpawnedWorker
{
    /// Kills all of its processes when it is closed.
    Handle job;
    Handle process;
    /// Our ends of named pipes, for overlapped reading and (the channel) writing.
    Handle channel;
    Handle output;
    std::unique_ptr<WorkerPage, UnmapPage> page;
};

} // namespace zetaudiofilterscan
