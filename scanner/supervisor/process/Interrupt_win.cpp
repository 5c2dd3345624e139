#include "supervisor/process/InterruptSystem_win.h"

#include <system_error>

namespace zetaudiofilterscan {

Interrupt::Interrupt() : system(std::make_unique<System>())
{
    system->event = zetcore::filesupport::Handle(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
    if (!system->event.IsOpen())
        throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), "CreateEvent");
}

Interrupt::~Interrupt() = default;

void Interrupt::Set()
{
    ::SetEvent(system->event.Get());
}

void Interrupt::Reset()
{
    ::ResetEvent(system->event.Get());
}

bool Interrupt::WaitUntil(std::chrono::steady_clock::time_point deadline)
{
    for (;;) {
        if (::WaitForSingleObject(system->event.Get(), WaitTimeout(deadline)) == WAIT_OBJECT_0)
            return true;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
    }
}

} // namespace zetaudiofilterscan
