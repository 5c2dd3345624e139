#include "WorkerChannel.h"

#include <cerrno>
#include <system_error>

#include <fcntl.h>
#include <poll.h>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>

#include "Frames.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

namespace {

[[noreturn]] void Throw(const char* what)
{
    throw std::system_error(errno, std::generic_category(), what);
}

// A plug-in may have made the shared descriptor non-blocking.
void WaitFor(int descriptor, short events)
{
    pollfd entry{descriptor, events, 0};
    ::poll(&entry, 1, -1);
}

} // namespace

struct WorkerChannel::System
{
    Descriptor channel;
    struct stat identity = {};
    WorkerPage* page = nullptr;
    FrameBuffer incoming;
};

WorkerChannel::WorkerChannel(const WorkerArguments& arguments) : system(std::make_unique<System>())
{
    system->channel = Descriptor(static_cast<int>(arguments.channel));
    const Descriptor page(static_cast<int>(arguments.page));
    if (::fcntl(system->channel.Get(), F_SETFD, FD_CLOEXEC) != 0 ||
        ::fstat(system->channel.Get(), &system->identity) != 0)
        Throw("the channel to the supervisor");
    void* address = ::mmap(nullptr, workerPageBytes, PROT_READ | PROT_WRITE, MAP_SHARED, page.Get(), 0);
    if (address == MAP_FAILED)
        Throw("the page shared with the supervisor");
    system->page = static_cast<WorkerPage*>(address);
}

WorkerChannel::~WorkerChannel()
{
    ::munmap(system->page, workerPageBytes);
}

std::optional<std::string> WorkerChannel::Read()
{
    for (;;) {
        if (std::optional<std::string> message = system->incoming.Take())
            return message;
        char bytes[4096];
        const ssize_t got = ::read(system->channel.Get(), bytes, sizeof bytes);
        if (got > 0)
            system->incoming.Append({bytes, static_cast<std::size_t>(got)});
        else if (got < 0 && (errno == EAGAIN || errno == EWOULDBLOCK))
            WaitFor(system->channel.Get(), POLLIN);
        else if (got == 0 || errno != EINTR)
            return std::nullopt;
    }
}

bool WorkerChannel::Write(std::string_view message)
{
    const std::string frame = MakeFrame(message);
    std::string_view rest = frame;
    while (!rest.empty()) {
        const ssize_t sent = ::send(system->channel.Get(), rest.data(), rest.size(), MSG_NOSIGNAL);
        if (sent >= 0)
            rest.remove_prefix(static_cast<std::size_t>(sent));
        else if (errno == EAGAIN || errno == EWOULDBLOCK)
            WaitFor(system->channel.Get(), POLLOUT);
        else if (errno != EINTR)
            return false;
    }
    return true;
}

bool WorkerChannel::IsIntact() const
{
    struct stat now = {};
    return ::fstat(system->channel.Get(), &now) == 0 && now.st_dev == system->identity.st_dev &&
           now.st_ino == system->identity.st_ino && (now.st_mode & S_IFMT) == S_IFSOCK;
}

WorkerPage& WorkerChannel::Page() noexcept
{
    return *system->page;
}

} // namespace zetaudiofilterscan
