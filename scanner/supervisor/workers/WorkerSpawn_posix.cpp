#include "supervisor/workers/WorkerSpawn_posix.h"

#include <array>
#include <cerrno>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <zetcore/process/SpawnProgram.h>

#include "WorkerArguments.h"

namespace zetaudiofilterscan {

namespace {

using zetcore::process::nullDevice;

// The worker's descriptors, after 0, 1 and 2.
constexpr int workerChannel = 3;
constexpr int workerPage = 4;
// Ours lie above those, so that arranging the worker's never overwrites one.
constexpr int lowestOwn = 10;

int Check(int result, const char* what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

Descriptor MoveUp(int descriptor)
{
    Descriptor low(descriptor);
    if (descriptor >= lowestOwn)
        return low;
    return Descriptor(Check(::fcntl(descriptor, F_DUPFD_CLOEXEC, lowestOwn), "fcntl"));
}

void SetNonBlocking(const Descriptor& descriptor)
{
    const int flags = Check(::fcntl(descriptor.Get(), F_GETFL), "fcntl");
    Check(::fcntl(descriptor.Get(), F_SETFL, flags | O_NONBLOCK), "fcntl");
}

std::pair<Descriptor, Descriptor> MakeChannel()
{
    std::array<int, 2> ends{};
    Check(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()), "socketpair");
    Descriptor second(ends[1]);
    Descriptor first = MoveUp(ends[0]);
    return {std::move(first), MoveUp(second.Release())};
}

std::pair<Descriptor, Descriptor> MakePipe()
{
    std::array<int, 2> ends{};
    Check(::pipe2(ends.data(), O_CLOEXEC), "pipe");
    Descriptor second(ends[1]);
    Descriptor first = MoveUp(ends[0]);
    return {std::move(first), MoveUp(second.Release())};
}

Descriptor MakePageFile()
{
    Descriptor page =
        MoveUp(Check(::memfd_create("zetaudiofilterscan", MFD_CLOEXEC | MFD_ALLOW_SEALING), "memfd_create"));
    Check(::ftruncate(page.Get(), workerPageBytes), "ftruncate");
    // A page that became shorter would kill the side that reads it.
    Check(::fcntl(page.Get(), F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW | F_SEAL_SEAL), "seal");
    return page;
}

std::unique_ptr<WorkerPage, UnmapPage> MapPage(const Descriptor& file)
{
    void* address = ::mmap(nullptr, workerPageBytes, PROT_READ | PROT_WRITE, MAP_SHARED, file.Get(), 0);
    if (address == MAP_FAILED)
        throw std::system_error(errno, std::generic_category(), "mmap");
    return std::unique_ptr<WorkerPage, UnmapPage>(static_cast<WorkerPage*>(address));
}

std::string OwnProgram()
{
    std::array<char, 4096> path{};
    const ssize_t length = ::readlink("/proc/self/exe", path.data(), path.size() - 1);
    // A program that was replaced while it runs is still there under this name.
    if (length <= 0 || ::access(path.data(), X_OK) != 0)
        return "/proc/self/exe";
    return {path.data(), static_cast<std::size_t>(length)};
}

pid_t Spawn(const Descriptor& channel, const Descriptor& page, const Descriptor& output)
{
    const WorkerArguments arguments{workerChannel, workerPage, static_cast<std::uint64_t>(::getpid())};
    std::error_code error;
    const pid_t pid =
        zetcore::process::SpawnProgram({OwnProgram(),
                                        arguments.ToArguments(),
                                        {nullDevice, output.Get(), output.Get(), channel.Get(), page.Get()}},
                                       error);
    if (error)
        throw std::system_error(error, "the worker process could not be started");
    return pid;
}

} // namespace

void UnmapPage::operator()(WorkerPage* page) const noexcept
{
    ::munmap(page, workerPageBytes);
}

SpawnedWorker SpawnWorker()
{
    SpawnedWorker worker;
    auto [channel, theirChannel] = MakeChannel();
    auto [output, theirOutput] = MakePipe();
    const Descriptor page = MakePageFile();
    SetNonBlocking(channel);
    SetNonBlocking(output);
    worker.page = MapPage(page);
    worker.pid = Spawn(theirChannel, page, theirOutput);
    worker.process = Descriptor(static_cast<int>(::syscall(SYS_pidfd_open, worker.pid, 0)));
    worker.channel = std::move(channel);
    worker.output = std::move(output);
    return worker;
}

} // namespace zetaudiofilterscan
