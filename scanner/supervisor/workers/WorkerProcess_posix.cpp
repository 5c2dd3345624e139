#include "supervisor/workers/WorkerProcess.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <system_error>
#include <thread>
#include <utility>

#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "Frames.h"
#include "WorkerPage.h"
#include "supervisor/process/InterruptSystem_posix.h"
#include "supervisor/workers/WorkerSpawn_posix.h"

namespace zetaudiofilterscan {

namespace {

using Clock = std::chrono::steady_clock;

// The pause between two looks at a process for which the system has no descriptor.
constexpr std::chrono::milliseconds pollWithoutProcessDescriptor{2};
// The supervisor looks for an answer so long before it sleeps.
constexpr std::chrono::microseconds lookAround{200};
// A killed process ends at once, unless the kernel holds it; that must not hold us.
constexpr std::chrono::seconds maxWaitForKilled{2};

} // namespace

struct WorkerProcess::System
{
    SpawnedWorker worker;
    OutputHandler output;
    FrameBuffer incoming;
    std::string message;
    std::string outgoing;
    bool channelOpen = true;
    bool reaped = false;

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

    Clock::time_point NextLook() const
    {
        return worker.process.Get() >= 0 ? Clock::time_point::max()
                                         : Clock::now() + pollWithoutProcessDescriptor;
    }

    // The group is killed while its leader is still on the system's list: its number cannot be another's.
    ProcessEnd KillAndReap()
    {
        ::kill(-worker.pid, SIGKILL);
        int status = 0;
        if (WaitForEnd(Clock::now() + maxWaitForKilled))
            ::waitpid(worker.pid, &status, 0);
        reaped = true;
        if (WIFSIGNALED(status))
            return {true, WTERMSIG(status)};
        return {false, WEXITSTATUS(status)};
    }
};

WorkerProcess::WorkerProcess(OutputHandler output) : system(std::make_unique<System>())
{
    system->output = std::move(output);
    system->worker = SpawnWorker();
}

WorkerProcess::~WorkerProcess()
{
    if (!system->reaped)
        system->KillAndReap();
}

void WorkerProcess::Send(std::string_view message)
{
    system->outgoing += MakeFrame(message);
    system->WriteChannel();
}

WorkerProcess::Event WorkerProcess::Wait(const Interrupt& interrupt, Clock::time_point deadline)
{
    System& self = *system;
    const auto lookAroundUntil = Clock::now() + lookAround;
    for (;;) {
        if (Clock::now() >= deadline)
            return Event::DeadlinePassed;
        if (self.TakeFrame())
            return Event::Message;
        if (self.HasEnded()) {
            while (self.channelOpen && self.ReadChannel())
                if (self.TakeFrame())
                    return Event::Message;
            return Event::Ended;
        }
        if (!self.channelOpen)
            return Event::ChannelClosed;

        const auto channelEvents = static_cast<short>(self.outgoing.empty() ? POLLIN : POLLIN | POLLOUT);
        std::array<pollfd, 4> entries{{{interrupt.GetSystem().descriptor.Get(), POLLIN, 0},
                                       {self.worker.process.Get(), POLLIN, 0},
                                       {self.worker.channel.Get(), channelEvents, 0},
                                       {self.worker.output.Get(), POLLIN, 0}}};
        // Most plug-ins are quick, and to wake a sleeping thread can take longer than to load one of them.
        const bool looksAround = Clock::now() < lookAroundUntil;
        const int timeout = looksAround ? 0 : PollTimeout(std::min(deadline, self.NextLook()));
        if (::poll(entries.data(), entries.size(), timeout) <= 0) {
            if (looksAround)
                std::this_thread::yield();
            continue;
        }
        if (entries[3].revents)
            self.ReadOutput();
        if (entries[2].revents & POLLOUT)
            self.WriteChannel();
        if (entries[2].revents & ~POLLOUT)
            self.ReadChannel();
        if (entries[0].revents)
            return Event::Interrupted;
    }
}

std::string WorkerProcess::TakeMessage()
{
    return std::move(system->message);
}

bool WorkerProcess::HasEnded() const
{
    return system->HasEnded();
}

bool WorkerProcess::WaitForEnd(Clock::time_point deadline) const
{
    return system->WaitForEnd(deadline);
}

ProcessEnd WorkerProcess::Finish()
{
    const ProcessEnd end = system->KillAndReap();
    // This reads only as much as a pipe holds, because a child that left the group could go on writing for
    // ever.
    for (int buffers = 0; buffers < 32 && system->worker.output.Get() >= 0 && system->ReadOutput();
         ++buffers) {
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

} // namespace zetaudiofilterscan
