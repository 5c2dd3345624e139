#include "supervisor/workers/WorkerSpawner.h"

#include <cerrno>
#include <optional>
#include <system_error>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <unistd.h>

#include <zetcore/debug/Trace.h>

#include "ProcessDescriptor_posix.h"
#include "TraceCategory.h"
#include "supervisor/workers/SpawnedWorker_posix.h"
#include "supervisor/workers/WorkerCopier_posix.h"
#include "supervisor/workers/WorkerProgram_posix.h"

namespace zetaudiofilterscan {

namespace {

int Check(int result, const char* what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

void SetNonBlocking(const Descriptor& descriptor)
{
    const int flags = Check(::fcntl(descriptor.Get(), F_GETFL), "fcntl");
    Check(::fcntl(descriptor.Get(), F_SETFL, flags | O_NONBLOCK), "fcntl");
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

} // namespace

void UnmapPage::operator()(WorkerPage* page) const noexcept
{
    ::munmap(page, workerPageBytes);
}

struct WorkerSpawner::System
{
    std::optional<WorkerCopier> copier;
    bool hasSpawned = false;

    /// A scan that needs one worker only has no use for the copier.
    void StartCopier()
    {
        if (copier || !std::exchange(hasSpawned, true))
            return;
        try {
            copier.emplace();
        } catch (const std::system_error& error) {
            zetcore::debug::TraceLine(1, traceCategory, error.what());
        }
    }
    pid_t StartProcess(const Descriptor& channel, const Descriptor& page, const Descriptor& output)
    {
        if (copier && copier->IsReady())
            if (const auto copy = copier->Copy({output.Get(), channel.Get(), page.Get()}))
                return *copy;
        StartCopier();
        return StartWorkerProgram({output.Get(), output.Get(), channel.Get(), page.Get()}, false);
    }
};

WorkerSpawner::WorkerSpawner() : system(std::make_unique<System>()) {}

WorkerSpawner::~WorkerSpawner() = default;

void WorkerSpawner::End() noexcept
{
    system->copier.reset();
    system->hasSpawned = false;
}

SpawnedWorker WorkerSpawner::Spawn()
{
    SpawnedWorker worker;
    auto [channel, theirChannel] = MakeChannel(SOCK_STREAM);
    auto [output, theirOutput] = MakePipe();
    const Descriptor page = MakePageFile();
    SetNonBlocking(channel);
    SetNonBlocking(output);
    worker.page = MapPage(page);
    worker.pid = system->StartProcess(theirChannel, page, theirOutput);
    worker.process = Descriptor(OpenProcess(worker.pid));
    worker.channel = std::move(channel);
    worker.output = std::move(output);
    return worker;
}

} // namespace zetaudiofilterscan
