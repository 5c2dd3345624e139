#include "WorkerCopies.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <optional>
#include <system_error>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/handles/Descriptor.h>

#include "CopyMessages_posix.h"
#include "ExitCodes.h"
#include "ProcessDescriptor_posix.h"
#include "WorkerProcessSetup.h"

namespace zetaudiofilterscan {

using zetcore::debug::FaultPoint;
using zetcore::filesupport::Descriptor;

namespace {

using Descriptors = std::array<Descriptor, CopyRequest::count>;

void Answer(int channel, const CopyAnswer& answer)
{
    if (!answer.Send(channel))
        EndWorkerProcess(exitConnectionClosed);
}

/// Waits for it. Empty when the supervisor has closed its end, or can get no copy.
std::optional<Descriptors> ReceiveRequest(int channel)
{
    try {
        return CopyRequest::Receive(channel);
    } catch (const std::system_error& error) {
        Answer(channel, {0, error.code().value()});
        return std::nullopt;
    }
}

/// The process between the two ends at once, and its child then belongs to the nearest process that has asked
/// for orphans: the supervisor, or another one when that is gone.
bool WaitUntilChildOf(pid_t supervisor, pid_t between)
{
    // Its number is its own as long as it is the parent. When this fails, it has ended already.
    const Descriptor itsEnd(OpenProcess(between));
    pollfd entry{itsEnd.Get(), POLLIN, 0};
    while (itsEnd.IsOpen() && ::getppid() == between && ::poll(&entry, 1, -1) < 0 && errno == EINTR) {
    }
    return ::getppid() == supervisor;
}

/// Makes this copy what a worker is that was started by itself.
void BecomeWorker(const WorkerArguments& arguments, const Descriptors& its, pid_t between)
{
    const int channel = static_cast<int>(arguments.channel);
    const auto& [output, itsChannel, page] = its;
    if (!WaitUntilChildOf(static_cast<pid_t>(arguments.parentProcess), between)) {
        Answer(channel, {0, ECHILD});
        EndWorkerProcess(exitConnectionClosed);
    }
    if (::setsid() < 0 || ::dup2(output.Get(), STDOUT_FILENO) < 0 ||
        ::dup2(output.Get(), STDERR_FILENO) < 0 || ::dup2(page.Get(), static_cast<int>(arguments.page)) < 0) {
        Answer(channel, {0, errno});
        EndWorkerProcess(exitWrongUsage);
    }
    Answer(channel, {::getpid(), 0});
    if (::dup2(itsChannel.Get(), channel) < 0)
        EndWorkerProcess(exitWrongUsage);
}

} // namespace

void MakeCopies(const WorkerArguments& arguments)
{
    const int channel = static_cast<int>(arguments.channel);
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A parent that ended before the line above sends nothing any more.
    if (static_cast<std::uint64_t>(::getppid()) != arguments.parentProcess)
        EndWorkerProcess(0);
    FaultPoint("worker.makes-copies");
    Answer(channel, {});
    while (const std::optional<Descriptors> request = ReceiveRequest(channel)) {
        if (const std::error_code error = zetcore::debug::FaultError("worker.copy")) {
            Answer(channel, {0, error.value()});
            continue;
        }
        const pid_t between = ::fork();
        if (between == 0) {
            const pid_t own = ::getpid();
            const pid_t copy = ::fork();
            if (copy == 0) {
                BecomeWorker(arguments, *request, own);
                return;
            }
            if (copy < 0)
                Answer(channel, {0, errno});
            FaultPoint("worker.between");
            EndWorkerProcess(0);
        }
        if (between < 0)
            Answer(channel, {0, errno});
        while (between > 0 && ::waitpid(between, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    EndWorkerProcess(exitConnectionClosed);
}

} // namespace zetaudiofilterscan
