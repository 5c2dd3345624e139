#include "supervisor/workers/WorkerProcess.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

#include "Frames.h"
#include "WorkerPage.h"
#include "supervisor/process/InterruptSystem_win.h"
#include "supervisor/workers/OverlappedPipe_win.h"
#include "supervisor/workers/WorkerSpawn_win.h"

namespace zetaudiofilterscan {

namespace {

using Clock = std::chrono::steady_clock;

constexpr DWORD maxWaitForKilledMilliseconds = 2000;
constexpr UINT killedExitCode = 1;

// A process that an exception ends has the exception's code as its exit code.
ProcessEnd ReadEnd(HANDLE process)
{
    constexpr DWORD firstException = 0xC0000000;
    // These lie below it: a breakpoint, `abort`, and GCC's C++ exceptions.
    constexpr DWORD others[] = {static_cast<DWORD>(EXCEPTION_BREAKPOINT), 0x40000015, 0x20474343};
    DWORD code = 0;
    ::GetExitCodeProcess(process, &code);
    const bool crashed = code >= firstException || std::ranges::find(others, code) != std::end(others);
    return {crashed, static_cast<long long>(code)};
}

} // namespace

struct WorkerProcess::System
{
    explicit System(OutputHandler handler)
        : output(std::move(handler)), worker(SpawnWorker()), channel(std::move(worker.channel)),
          outputPipe(std::move(worker.output))
    {}

    OutputHandler output;
    SpawnedWorker worker;
    OverlappedPipe channel;
    OverlappedPipe outputPipe;
    FrameBuffer incoming;
    std::string message;
    bool finished = false;

    bool ReadOutput()
    {
        const std::string_view bytes = outputPipe.Read();
        if (!bytes.empty())
            output(bytes);
        return !bytes.empty();
    }

    bool ReadChannel()
    {
        const std::string_view bytes = channel.Read();
        incoming.Append(bytes);
        return !bytes.empty();
    }

    bool TakeFrame()
    {
        std::optional<std::string> frame = incoming.Take();
        if (frame)
            message = std::move(*frame);
        return frame.has_value();
    }

    bool HasEnded() const { return ::WaitForSingleObject(worker.process.Get(), 0) == WAIT_OBJECT_0; }

    ProcessEnd Kill()
    {
        ::TerminateJobObject(worker.job.Get(), killedExitCode);
        ::WaitForSingleObject(worker.process.Get(), maxWaitForKilledMilliseconds);
        finished = true;
        return ReadEnd(worker.process.Get());
    }
};

WorkerProcess::WorkerProcess(OutputHandler output) : system(std::make_unique<System>(std::move(output))) {}

WorkerProcess::~WorkerProcess()
{
    if (!system->finished)
        system->Kill();
}

void WorkerProcess::Send(std::string_view message)
{
    system->channel.Write(MakeFrame(message));
}

WorkerProcess::Event WorkerProcess::Wait(const Interrupt& interrupt, Clock::time_point deadline)
{
    System& self = *system;
    for (;;) {
        if (Clock::now() >= deadline)
            return Event::DeadlinePassed;
        if (self.TakeFrame())
            return Event::Message;
        const bool ended = self.HasEnded();
        if (self.ReadChannel())
            continue;
        if (ended)
            return Event::Ended;
        if (!self.channel.IsOpen())
            return Event::ChannelClosed;

        std::array<HANDLE, 5> handles{interrupt.GetSystem().event.Get(), self.worker.process.Get(),
                                      self.channel.ReadEvent(), self.channel.WriteEvent(),
                                      self.outputPipe.ReadEvent()};
        const auto count = static_cast<DWORD>(self.outputPipe.IsOpen() ? handles.size() : handles.size() - 1);
        const DWORD result = ::WaitForMultipleObjects(count, handles.data(), FALSE, WaitTimeout(deadline));
        self.channel.ContinueWriting();
        self.ReadOutput();
        if (result == WAIT_OBJECT_0)
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
    return ::WaitForSingleObject(system->worker.process.Get(), WaitTimeout(deadline)) == WAIT_OBJECT_0;
}

ProcessEnd WorkerProcess::Finish()
{
    const ProcessEnd end = system->Kill();
    for (int buffers = 0; buffers < 32 && system->ReadOutput(); ++buffers) {
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
