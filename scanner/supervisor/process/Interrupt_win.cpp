#include "supervisor/process/InterruptSystem_win.h"

#include <system_error>

namespace zetaudiofilterscan {

Interrupt::Interrupt() : system(std::make_unique<System>())
{
    system->event = ::CreateEventW(nullptr, TRUE, FALSE, nullptr);
    if (!system->event)
        throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), "CreateEvent");
}

Interrupt::~Interrupt()
{
    ::CloseHandle(system->event);
}

void Interrupt::Set()
{
    ::SetEvent(system->event);
}

void Interrupt::Reset()
{
    ::ResetEvent(system->event);
}

bool Interrupt::WaitUntil(std::chrono::steady_clock::time_point deadline)
{
    for (;;) {
        if (::WaitForSingleObject(system->event, WaitTimeout(deadline)) == WAIT_OBJECT_0)
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
    }
}

} // namespace zetaudiofilterscan
