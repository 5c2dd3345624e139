#include "WorkerChannel.h"

#include <algorithm>
#include <system_error>

#include <windows.h>

#include <zetcore/filesupport/handles/Handle.h>

#include "Frames.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Handle;

namespace {

[[noreturn]] void Throw(const char* what)
{
    throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), what);
}

Handle ToHandle(std::uint64_t value)
{
    return Handle(reinterpret_cast<HANDLE>(static_cast<std::uintptr_t>(value)));
}

} // namespace

struct WorkerChannel::System
{
    Handle channel;
    WorkerPage* page = nullptr;
    FrameBuffer incoming;
};

WorkerChannel::WorkerChannel(const WorkerArguments& arguments) : system(std::make_unique<System>())
{
    system->channel = ToHandle(arguments.channel);
    const Handle page = ToHandle(arguments.page);
    if (!::SetHandleInformation(system->channel.Get(), HANDLE_FLAG_INHERIT, 0))
        Throw("the channel to the supervisor");
    void* address = ::MapViewOfFile(page.Get(), FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, workerPageBytes);
    if (!address)
        Throw("the page shared with the supervisor");
    system->page = static_cast<WorkerPage*>(address);
}

WorkerChannel::~WorkerChannel()
{
    ::UnmapViewOfFile(system->page);
}

std::optional<std::string> WorkerChannel::Read()
{
    for (;;) {
        if (std::optional<std::string> message = system->incoming.Take())
            return message;
        char bytes[4096];
        DWORD got = 0;
        if (!::ReadFile(system->channel.Get(), bytes, sizeof bytes, &got, nullptr) || got == 0)
            return std::nullopt;
        system->incoming.Append({bytes, got});
    }
}

bool WorkerChannel::Write(std::string_view message)
{
    const std::string frame = MakeFrame(message);
    std::string_view rest = frame;
    while (!rest.empty()) {
        DWORD sent = 0;
        const auto size = static_cast<DWORD>(std::min<std::size_t>(rest.size(), 65536));
        if (!::WriteFile(system->channel.Get(), rest.data(), size, &sent, nullptr))
            return false;
        rest.remove_prefix(sent);
    }
    return true;
}

bool WorkerChannel::IsIntact() const
{
    return ::GetFileType(system->channel.Get()) == FILE_TYPE_PIPE;
}

WorkerPage& WorkerChannel::Page() noexcept
{
    return *system->page;
}

} // namespace zetaudiofilterscan
