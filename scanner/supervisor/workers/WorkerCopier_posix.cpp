#include "supervisor/workers/WorkerCopier_posix.h"

#include <cerrno>
#include <csignal>
#include <system_error>

#include <sys/socket.h>
#include <sys/wait.h>

#include <zetcore/debug/Trace.h>
#include <zetcore/process/SpawnProgram.h>

#include "TraceCategory.h"
#include "supervisor/workers/WorkerProgram_posix.h"

namespace zetaudiofilterscan {

namespace {

/// A copy takes less than a millisecond. The scan stands still meanwhile, and without an answer the program
/// is started instead.
constexpr int longestCopyMilliseconds = 2000;

} // namespace

WorkerCopier::WorkerCopier()
{
    auto [ours, theirs] = MakeChannel(SOCK_SEQPACKET);
    using zetcore::process::nullDevice;
    process = StartWorkerProgram({nullDevice, nullDevice, theirs.Get()}, true);
    channel = std::move(ours);
}

WorkerCopier::~WorkerCopier()
{
    ::kill(process, SIGKILL);
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
}

bool WorkerCopier::IsReady()
{
    if (!isReady && channel.IsOpen())
        isReady = CopyAnswer::Receive(channel.Get(), 0).has_value();
    return isReady;
}

std::optional<pid_t> WorkerCopier::Copy(const std::array<int, CopyRequest::count>& descriptors)
{
    if (!CopyRequest::Send(channel.Get(), descriptors)) {
        GiveUp(errno);
        return std::nullopt;
    }
    const std::optional<CopyAnswer> answer = CopyAnswer::Receive(channel.Get(), longestCopyMilliseconds);
    if (!answer || answer->process <= 0) {
        GiveUp(answer ? answer->error : ETIMEDOUT);
        return std::nullopt;
    }
    return answer->process;
}

/// A late answer must not be taken for the next one's, so that nothing more is asked for.
void WorkerCopier::GiveUp(int error)
{
    isReady = false;
    channel.Close();
    zetcore::debug::TraceLine(1, traceCategory,
                              "workers cannot be copied from here on, and are started instead: " +
                                  std::generic_category().message(error));
}

} // namespace zetaudiofilterscan
