#include "supervisor/workers/WorkerProgram_posix.h"

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

#include <sys/socket.h>
#include <unistd.h>

#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetcore/process/SpawnProgram.h>

#include "WorkerArguments.h"

namespace zetaudiofilterscan {

namespace {

std::string OwnProgram()
{
    std::array<char, 4096> path{};
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size() - 1);
    // A program that was replaced while it runs is still there under this name.
    if (length <= 0 || ::access(path.data(), X_OK) != 0)
        return "/proc/self/exe";
    return {path.data(), static_cast<std::size_t>(length)};
}

} // namespace

std::pair<Descriptor, Descriptor> MakeChannel(int type)
{
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, type | SOCK_CLOEXEC, 0, ends.data()) != 0)
        throw std::system_error(errno, std::generic_category(), "socketpair");
    Descriptor second(ends[1]);
    Descriptor first = MoveUp(ends[0]);
    return {std::move(first), MoveUp(second.Release())};
}

pid_t StartWorkerProgram(const std::vector<int>& descriptors, bool makesCopies)
{
    const WorkerArguments arguments{workerChannel, workerPage, static_cast<std::uint64_t>(::getpid()),
                                    makesCopies};
    std::vector<int> all{zetcore::process::nullDevice};
    all.insert(all.end(), descriptors.begin(), descriptors.end());
    std::error_code error;
    const pid_t process = zetcore::process::SpawnProgram({OwnProgram(), arguments.ToArguments(), all}, error);
    if (error)
        throw std::system_error(
            error, zetaudiopluginhost::reasons::InEnglish(zetaudiopluginhost::reasons::noWorker));
    return process;
}

} // namespace zetaudiofilterscan
