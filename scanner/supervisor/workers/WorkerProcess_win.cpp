#include "supervisor/workers/WorkerProcess.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

#include <windows.h>

#include <psapi.h>

#include "Frames.h"
#include "WorkerPage.h"
#include "supervisor/process/InterruptSystem_win.h"
#include "supervisor/workers/OverlappedPipe_win.h"
#include "supervisor/workers/SpawnedWorker_win.h"
#include "supervisor/workers/WorkerSpawner.h"

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
    System(WorkerSpawner& spawner, OutputHandler handler)
        : output(std::move(handler)), worker(spawner.Spawn()), channel(std::move(worker.channel)),
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

WorkerProcess::WorkerProcess(WorkerSpawner& spawner, OutputHandler output)
    : system(std::make_unique<System>(spawner, std::move(output)))
{}

WorkerProcess::~WorkerProcess()
{
    if (!system->finished)
        system->Kill();
}

void WorkerProcess::Send(std::string_view message)
{
    system->channel.Write(MakeFrame(message));
}

void WorkerProcess::WaitForAny(std::span<WorkerProcess* const> processes, const Interrupt& interrupt,
                               Clock::time_point deadline, std::chrono::microseconds)
{
    // The system waits for so many things at once. A pipe that is being written to has an event of its own;
    // where there is no room for it, it is looked at in a moment.
    constexpr std::size_t most = MAXIMUM_WAIT_OBJECTS;
    constexpr std::chrono::milliseconds moment{5};
    std::vector<HANDLE> handles{interrupt.GetSystem().event.Get()};
    std::vector<HANDLE> ofWrites;
    for (const WorkerProcess* process : processes) {
        const System& each = *process->system;
        handles.push_back(each.worker.process.Get());
        if (each.channel.IsOpen())
            handles.push_back(each.channel.ReadEvent());
        if (each.outputPipe.IsOpen())
            handles.push_back(each.outputPipe.ReadEvent());
        if (each.channel.IsWriting())
            ofWrites.push_back(each.channel.WriteEvent());
    }
    for (const HANDLE write : ofWrites) {
        if (handles.size() < most)
            handles.push_back(write);
        else
            deadline = std::min(deadline, Clock::now() + moment);
    }
    ::WaitForMultipleObjects(static_cast<DWORD>(handles.size()), handles.data(), FALSE,
                             WaitTimeout(deadline));
    for (const WorkerProcess* process : processes) {
        process->system->channel.ContinueWriting();
        process->system->ReadOutput();
        process->system->ReadChannel();
    }
}

void WorkerProcess::ReadNow()
{
    system->ReadOutput();
    system->ReadChannel();
}

std::optional<WorkerProcess::Event> WorkerProcess::TakeEvent()
{
    System& self = *system;
    if (self.TakeFrame())
        return Event::Message;
    // Messages that it sent before its end come first.
    const bool ended = self.HasEnded();
    while (self.ReadChannel())
        if (self.TakeFrame())
            return Event::Message;
    if (ended)
        return Event::Ended;
    if (!self.channel.IsOpen())
        return Event::ChannelClosed;
    return std::nullopt;
}

std::string WorkerProcess::TakeMessage()
{
    return std::move(system->message);
}

void WorkerProcess::BeginKill() noexcept
{
    if (!system->finished)
        ::TerminateJobObject(system->worker.job.Get(), killedExitCode);
}

ProcessEnd WorkerProcess::Finish()
{
    const ProcessEnd end = system->Kill();
    for (int buffers = 0; buffers < mostBuffersLeft && system->ReadOutput(); ++buffers) {
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
    PROCESS_MEMORY_COUNTERS_EX counters = {};
    counters.cb = sizeof counters;
    const bool told = ::GetProcessMemoryInfo(system->worker.process.Get(),
                                             reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                                             sizeof counters) != FALSE;
    // A system that does not count the private memory of others still knows what they have in memory.
    return told ? std::max<std::uint64_t>(counters.PrivateUsage, counters.WorkingSetSize) : 0;
}

} // namespace zetaudiofilterscan
