#include "supervisor/workers/WorkerProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fstream>
#include <string>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <zetcore/utility/Backoff.h>

#include "Frames.h"
#include "WorkerPage.h"
#include "supervisor/process/InterruptSystem_posix.h"
#include "supervisor/workers/SpawnedWorker_posix.h"
#include "supervisor/workers/WorkerSpawner.h"

namespace zetaudiofilterscan {

namespace {

using Clock = std::chrono::steady_clock;

// The pause between two looks at a process for which the system has no descriptor.
constexpr std::chrono::milliseconds pollWithoutProcessDescriptor{2};
// A killed process ends at once, unless the kernel holds it; that must not hold us.
constexpr std::chrono::seconds maxWaitForKilled{2};
// The same for what its plug-ins have started.
constexpr std::chrono::milliseconds maxWaitForGroup{200};

} // namespace

struct WorkerProcess::System
{
    SpawnedWorker worker;
    OutputHandler output;
    FrameBuffer incoming;
    std::string message;
    std::string outgoing;
    bool channelOpen = true;
    bool saysItEnded = false;
    bool reaped = false;
    ProcessEnd end;

    // Reads at most one buffer, so that a flood cannot keep us from looking at the clock. False at the end.
    bool ReadOutput()
    {
        std::array<char, 65536> bytes; // filled by read
        const ssize_t got = ::read(worker.output.Get(), bytes.data(), bytes.size());
        if (got > 0)
            output({bytes.data(), static_cast<std::size_t>(got)});
        else if (got == 0 || (errno != EAGAIN && errno != EINTR))
            worker.output.Close();
        return got > 0;
    }

    bool ReadChannel()
    {
        std::array<char, 65536> bytes; // filled by read
        const ssize_t got = ::read(worker.channel.Get(), bytes.data(), bytes.size());
        if (got > 0)
            incoming.Append({bytes.data(), static_cast<std::size_t>(got)});
        else if (got == 0 || (errno != EAGAIN && errno != EINTR))
            channelOpen = false;
        return got > 0;
    }

    void WriteChannel()
    {
        while (channelOpen && !outgoing.empty()) {
            const ssize_t sent = ::send(worker.channel.Get(), outgoing.data(), outgoing.size(), MSG_NOSIGNAL);
            if (sent > 0)
                outgoing.erase(0, static_cast<std::size_t>(sent));
            else if (errno == EAGAIN || errno == EWOULDBLOCK)
                return;
            else if (errno != EINTR)
                outgoing.clear(); // reading tells that the channel is closed
        }
    }

    bool TakeFrame()
    {
        std::optional<std::string> frame = incoming.Take();
        if (frame)
            message = std::move(*frame);
        return frame.has_value();
    }

    bool HasEnded() const
    {
        siginfo_t info = {};
        if (reaped)
            return true;
        if (::waitid(P_PID, static_cast<id_t>(worker.pid), &info, WEXITED | WNOHANG | WNOWAIT) != 0)
            return errno == ECHILD;
        return info.si_pid == worker.pid;
    }

    // Returns when the process has ended or the time is up.
    bool WaitForEnd(Clock::time_point deadline) const
    {
        while (!HasEnded()) {
            if (Clock::now() >= deadline)
                return false;
            pollfd entry{worker.process.Get(), POLLIN, 0};
            ::poll(&entry, 1, PollTimeout(std::min(deadline, NextLook())));
        }
        return true;
    }

    // The entries of one worker in a list for `poll`: its process, channel and output.
    static constexpr std::size_t entriesOfEach = 3;

    void AddTo(std::vector<pollfd>& entries) const
    {
        const auto channelEvents = static_cast<short>(outgoing.empty() ? POLLIN : POLLIN | POLLOUT);
        entries.push_back({worker.process.Get(), POLLIN, 0});
        entries.push_back({channelOpen ? worker.channel.Get() : -1, channelEvents, 0});
        entries.push_back({worker.output.Get(), POLLIN, 0});
    }

    void Look(std::span<const pollfd, entriesOfEach> entries)
    {
        saysItEnded = saysItEnded || entries[0].revents != 0;
        if (entries[2].revents)
            ReadOutput();
        if (entries[1].revents & POLLOUT)
            WriteChannel();
        if (entries[1].revents & ~POLLOUT)
            ReadChannel();
    }

    // Saves a question to the system for each worker that only has an answer.
    bool MayHaveEnded() const { return saysItEnded || !channelOpen || worker.process.Get() < 0; }

    Clock::time_point NextLook() const
    {
        return worker.process.Get() >= 0 ? Clock::time_point::max()
                                         : Clock::now() + pollWithoutProcessDescriptor;
    }

    // A helper process that a plug-in has started must not die in the middle of another plug-in's trial. The
    // orphans of a worker are the supervisor's children, because it has asked for that.
    void WaitForGroup(Clock::time_point deadline) const
    {
        zetcore::utility::Backoff pause;
        while (Clock::now() < deadline) {
            const pid_t collected = ::waitpid(-worker.pid, nullptr, WNOHANG | __WALL);
            if (collected < 0)
                return;
            if (collected == 0)
                pause();
        }
    }

    // The group is killed while its leader is still on the system's list: its number cannot be another's.
    ProcessEnd KillAndReap()
    {
        if (reaped)
            return end;
        ::kill(-worker.pid, SIGKILL);
        int status = 0;
        if (WaitForEnd(Clock::now() + maxWaitForKilled) && ::waitpid(worker.pid, &status, 0) == worker.pid)
            WaitForGroup(Clock::now() + maxWaitForGroup);
        reaped = true;
        end =
            WIFSIGNALED(status) ? ProcessEnd{true, WTERMSIG(status)} : ProcessEnd{false, WEXITSTATUS(status)};
        return end;
    }
};

WorkerProcess::WorkerProcess(WorkerSpawner& spawner, OutputHandler output)
    : system(std::make_unique<System>())
{
    system->output = std::move(output);
    system->worker = spawner.Spawn();
}

WorkerProcess::~WorkerProcess()
{
    system->KillAndReap();
}

void WorkerProcess::Send(std::string_view message)
{
    system->outgoing += MakeFrame(message);
    system->WriteChannel();
}

void WorkerProcess::WaitForAny(std::span<WorkerProcess* const> processes, const Interrupt& interrupt,
                               Clock::time_point deadline, std::chrono::microseconds lookAround)
{
    std::vector<pollfd> entries{{interrupt.GetSystem().descriptor.Get(), POLLIN, 0}};
    for (const WorkerProcess* process : processes) {
        process->system->AddTo(entries);
        deadline = std::min(deadline, process->system->NextLook());
    }
    const auto lookAroundUntil = Clock::now() + lookAround;
    while (::poll(entries.data(), entries.size(), 0) <= 0) {
        if (Clock::now() >= lookAroundUntil) {
            ::poll(entries.data(), entries.size(), PollTimeout(deadline));
            break;
        }
        std::this_thread::yield();
    }
    auto its = entries.begin() + 1;
    for (WorkerProcess* process : processes) {
        process->system->Look(std::span<const pollfd, System::entriesOfEach>(its, System::entriesOfEach));
        its += System::entriesOfEach;
    }
}

void WorkerProcess::ReadNow()
{
    system->ReadOutput();
    if (system->channelOpen)
        system->ReadChannel();
}

std::optional<WorkerProcess::Event> WorkerProcess::TakeEvent()
{
    System& self = *system;
    if (self.TakeFrame())
        return Event::Message;
    if (self.MayHaveEnded() && self.HasEnded()) {
        while (self.channelOpen && self.ReadChannel())
            if (self.TakeFrame())
                return Event::Message;
        return Event::Ended;
    }
    if (!self.channelOpen)
        return Event::ChannelClosed;
    return std::nullopt;
}

std::string WorkerProcess::TakeMessage()
{
    return std::move(system->message);
}

void WorkerProcess::BeginKill() noexcept
{
    if (!system->reaped)
        ::kill(-system->worker.pid, SIGKILL);
}

ProcessEnd WorkerProcess::Finish()
{
    const ProcessEnd end = system->KillAndReap();
    // A child that left the group may still write.
    for (int buffers = 0;
         buffers < mostBuffersLeft && system->worker.output.Get() >= 0 && system->ReadOutput(); ++buffers) {
    }
    return end;
}

std::uint32_t WorkerProcess::Entity() const noexcept
{
    return system->worker.page->entity;
}

std::uint32_t WorkerProcess::Phase() const noexcept
{
    return system->worker.page->phase;
}

std::uint64_t WorkerProcess::MemoryInUse() const
{
    // The words of the file are counts of pages: all, in memory, and of those, shared with files.
    std::ifstream file("/proc/" + std::to_string(system->worker.pid) + "/statm");
    std::uint64_t all = 0;
    std::uint64_t resident = 0;
    std::uint64_t shared = 0;
    if (!(file >> all >> resident >> shared) || shared > resident)
        return 0;
    return (resident - shared) * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace zetaudiofilterscan
