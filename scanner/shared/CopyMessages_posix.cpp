#include "CopyMessages_posix.h"

#include <cerrno>
#include <cstring>

#include <poll.h>
#include <sys/socket.h>

#include "WorkerDescriptors_posix.h"

namespace zetaudiofilterscan {

using zetcore::filesupport::Descriptor;

namespace {

/// The memory of a request, for the system's calls.
class RequestMessage
{
  public:
    static constexpr std::size_t bytes = CopyRequest::count * sizeof(int);

    RequestMessage()
    {
        header.msg_iov = &part;
        header.msg_iovlen = 1;
        header.msg_control = control.data();
        header.msg_controllen = control.size();
    }
    RequestMessage(const RequestMessage&) = delete;
    RequestMessage& operator=(const RequestMessage&) = delete;

    msghdr header{};

  private:
    alignas(cmsghdr) std::array<char, CMSG_SPACE(bytes)> control{};
    char content = 0;
    iovec part{&content, sizeof content};
};

} // namespace

bool CopyRequest::Send(int socket, const std::array<int, count>& descriptors)
{
    RequestMessage message;
    cmsghdr* const beside = CMSG_FIRSTHDR(&message.header);
    beside->cmsg_level = SOL_SOCKET;
    beside->cmsg_type = SCM_RIGHTS;
    beside->cmsg_len = CMSG_LEN(RequestMessage::bytes);
    std::memcpy(CMSG_DATA(beside), descriptors.data(), RequestMessage::bytes);
    return ::sendmsg(socket, &message.header, MSG_NOSIGNAL | MSG_DONTWAIT) > 0;
}

std::optional<std::array<Descriptor, CopyRequest::count>> CopyRequest::Receive(int socket)
{
    RequestMessage message;
    ssize_t got = 0;
    while ((got = ::recvmsg(socket, &message.header, MSG_CMSG_CLOEXEC)) < 0 && errno == EINTR) {
    }
    const cmsghdr* const beside = CMSG_FIRSTHDR(&message.header);
    if (got <= 0 || !beside || beside->cmsg_type != SCM_RIGHTS ||
        beside->cmsg_len != CMSG_LEN(RequestMessage::bytes))
        return std::nullopt;
    std::array<int, count> received{};
    std::memcpy(received.data(), CMSG_DATA(beside), RequestMessage::bytes);
    return std::array{MoveUp(received[0]), MoveUp(received[1]), MoveUp(received[2])};
}

bool CopyAnswer::Send(int socket) const
{
    return ::send(socket, this, sizeof *this, MSG_NOSIGNAL) == sizeof *this;
}

std::optional<CopyAnswer> CopyAnswer::Receive(int socket, int waitMilliseconds)
{
    pollfd entry{socket, POLLIN, 0};
    CopyAnswer answer;
    if (::poll(&entry, 1, waitMilliseconds) <= 0 ||
        ::recv(socket, &answer, sizeof answer, MSG_DONTWAIT) != sizeof answer)
        return std::nullopt;
    return answer;
}

} // namespace zetaudiofilterscan
