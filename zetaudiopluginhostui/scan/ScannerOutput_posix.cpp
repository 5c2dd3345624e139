#include "scan/ScannerOutput_posix.h"

#include <fcntl.h>
#include <limits.h>
#include <poll.h>
#include <signal.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <mutex>
#include <string_view>
#include <system_error>
#include <thread>

#include <zetcore/filesupport/handles/Descriptor.h>
#include <zetcore/string/OutputTail.h>

namespace zetaudiopluginhostui {

using zetcore::filesupport::Descriptor;

namespace {

// No more is held at a time: a scanner that writes faster than it is passed on waits, as it would for the
// terminal.
constexpr std::size_t mostAtATime = 65536;

int Check(int result, const char* what)
{
    if (result < 0)
        throw std::system_error(errno, std::generic_category(), what);
    return result;
}

/// If this process has closed a standard descriptor, a new one gets its number.
Descriptor CopyAboveStandard(int descriptor)
{
    return Descriptor(Check(::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1), "fcntl"));
}

/// A new thread takes over its maker's.
class NoSignals
{
  public:
    NoSignals()
    {
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, &before);
    }
    ~NoSignals() { ::pthread_sigmask(SIG_SETMASK, &before, nullptr); }
    NoSignals(const NoSignals&) = delete;
    NoSignals& operator=(const NoSignals&) = delete;

  private:
    sigset_t before;
};

} // namespace

struct ScannerOutput::State
{
    State()
    {
        std::array<int, 2> ends{};
        Check(::pipe2(ends.data(), O_CLOEXEC), "pipe");
        const Descriptor lowReading(ends[0]);
        const Descriptor lowWriting(ends[1]);
        reading = CopyAboveStandard(ends[0]);
        writing = CopyAboveStandard(ends[1]);
        Check(::fcntl(reading.Get(), F_SETFL, O_NONBLOCK), "fcntl");
        const Descriptor lowWake(Check(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK), "eventfd"));
        wake = CopyAboveStandard(lowWake.Get());
        const NoSignals noSignals;
        thread = std::thread([this] { Run(); });
    }

    ~State()
    {
        stopping = true;
        Wake();
        thread.join();
    }

    void Wake() const
    {
        const std::uint64_t one = 1;
        [[maybe_unused]] const auto written = ::write(wake.Get(), &one, sizeof one);
    }

    void Run()
    {
        for (bool open = true; open && !stopping;) {
            WaitFor(reading.Get(), POLLIN);
            open = Read();
            PassOn();
        }
        // It may have written this before its end was noticed elsewhere.
        Read();
        PassOn();
    }

    /// Until the descriptor is ready (true), or somebody has called `Wake`.
    bool WaitFor(int descriptor, short events) const
    {
        std::array<pollfd, 2> entries{pollfd{descriptor, events, 0}, pollfd{wake.Get(), POLLIN, 0}};
        ::poll(entries.data(), entries.size(), stopping ? 0 : -1);
        if (entries[1].revents != 0) {
            std::uint64_t count = 0;
            [[maybe_unused]] const auto got = ::read(wake.Get(), &count, sizeof count);
        }
        return entries[0].revents != 0;
    }

    /// Takes what is there; false at the end.
    bool Read()
    {
        const std::lock_guard lock(mutex);
        std::array<char, 4096> buffer{};
        while (unpassed.size() < mostAtATime) {
            const ssize_t got = ::read(reading.Get(), buffer.data(), buffer.size());
            if (got <= 0)
                return got < 0 && (errno == EAGAIN || errno == EINTR);
            const std::string_view bytes(buffer.data(), static_cast<std::size_t>(got));
            tail.Append(bytes);
            unpassed += bytes;
        }
        return true;
    }

    void PassOn()
    {
        std::string text;
        {
            const std::lock_guard lock(mutex);
            text.swap(unpassed);
        }
        if (target.Get() < 0)
            return;
        for (std::string_view rest = text; !rest.empty();) {
            if (!WaitFor(target.Get(), POLLOUT)) {
                if (stopping)
                    return;
                continue;
            }
            // A pipe that is ready takes so much without making the writer wait.
            const ssize_t written =
                ::write(target.Get(), rest.data(), std::min<std::size_t>(rest.size(), PIPE_BUF));
            if (written < 0 && errno != EAGAIN && errno != EINTR)
                return;
            rest.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
        }
    }

    /// Empty when this process has closed its standard error. It is looked for before anything else can get
    /// that number.
    const Descriptor target{::fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1)};
    Descriptor reading;
    Descriptor writing;
    Descriptor wake;
    std::atomic<bool> stopping = false;
    std::mutex mutex;
    std::string unpassed;
    zetcore::string::OutputTail tail;
    std::thread thread;
};

ScannerOutput::ScannerOutput() : state(std::make_unique<State>()) {}

ScannerOutput::~ScannerOutput() = default;

int ScannerOutput::ScannerEnd() const noexcept
{
    return state->writing.Get();
}

void ScannerOutput::CloseScannerEnd()
{
    state->writing.Close();
}

std::string ScannerOutput::LastLine()
{
    state->Read();
    state->Wake();
    const std::lock_guard lock(state->mutex);
    return state->tail.LastLine();
}

} // namespace zetaudiopluginhostui
