#include "supervisor/process/InterruptSystem_posix.h"

#include <cerrno>
#include <cstdint>
#include <system_error>
#include <thread>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

Interrupt::Interrupt() : system(std::make_unique<System>())
{
    system->descriptor = Descriptor(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    if (!system->descriptor.IsOpen())
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

Interrupt::~Interrupt() = default;

namespace {

bool IsReadable(int descriptor)
{
    pollfd entry{descriptor, POLLIN, 0};
    return ::poll(&entry, 1, 0) > 0;
}

// The next request is nearly there when the last one has been answered, and to wake a sleeping thread can
// take longer than to answer it.
bool IsReadableSoon(int descriptor)
{
    constexpr std::chrono::microseconds moment{100};
    const auto until = std::chrono::steady_clock::now() + moment;
    do {
        if (IsReadable(descriptor))
            return true;
        std::this_thread::yield();
    } while (std::chrono::steady_clock::now() < until);
    return false;
}

} // namespace

void Interrupt::Set()
{
    const std::uint64_t one = 1;
    // The write can only fail when the counter is full, and then the interrupt is set already.
    [[maybe_unused]] const ssize_t written = ::write(system->descriptor.Get(), &one, sizeof one);
}

void Interrupt::Reset()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t read = ::read(system->descriptor.Get(), &count, sizeof count);
}

bool Interrupt::WaitUntil(std::chrono::steady_clock::time_point deadline)
{
    if (IsReadableSoon(system->descriptor.Get()))
        return true;
    for (;;) {
        pollfd entry{system->descriptor.Get(), POLLIN, 0};
        if (::poll(&entry, 1, PollTimeout(deadline)) > 0)
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
    }
}

} // namespace zetaudiofilterscan
