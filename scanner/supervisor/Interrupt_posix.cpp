#include "InterruptSystem_posix.h"

#include <cerrno>
#include <cstdint>
#include <system_error>

#include <poll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include "PollTimeout_posix.h"

namespace zetaudiofilterscan {

Interrupt::Interrupt() : system(std::make_unique<System>())
{
    system->descriptor = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (system->descriptor < 0)
        throw std::system_error(errno, std::generic_category(), "eventfd");
}

Interrupt::~Interrupt()
{
    ::close(system->descriptor);
}

void Interrupt::Set()
{
    const std::uint64_t one = 1;
    // It can only fail when it is set already, as often as the counter can count.
    [[maybe_unused]] const ssize_t written = ::write(system->descriptor, &one, sizeof one);
}

void Interrupt::Reset()
{
    std::uint64_t count = 0;
    [[maybe_unused]] const ssize_t read = ::read(system->descriptor, &count, sizeof count);
}

bool Interrupt::WaitUntil(std::chrono::steady_clock::time_point deadline)
{
    for (;;) {
        pollfd entry{system->descriptor, POLLIN, 0};
        if (::poll(&entry, 1, PollTimeout(deadline)) > 0)
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
    }
}

} // namespace zetaudiofilterscan
