#include "SocketDiagnosis_posix.h"

#include <array>
#include <cstddef>
#include <cstring>

#include <arpa/inet.h>
#include <linux/inet_diag.h>
#include <linux/netlink.h>
#include <linux/sock_diag.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <zetcore/filesupport/handles/Descriptor.h>

namespace zettransport {

using boost::asio::ip::tcp;
using zetcore::filesupport::Descriptor;

namespace {

struct Question
{
    nlmsghdr header;
    inet_diag_req_v2 request;
};

Question MakeQuestion(const tcp::endpoint& local, const tcp::endpoint& remote)
{
    Question question{};
    question.header.nlmsg_len = sizeof question;
    question.header.nlmsg_type = SOCK_DIAG_BY_FAMILY;
    question.header.nlmsg_flags = NLM_F_REQUEST;
    question.request.sdiag_family = AF_INET;
    question.request.sdiag_protocol = IPPROTO_TCP;
    question.request.idiag_states = ~0u;
    question.request.id.idiag_sport = htons(local.port());
    question.request.id.idiag_dport = htons(remote.port());
    question.request.id.idiag_src[0] = htonl(local.address().to_v4().to_uint());
    question.request.id.idiag_dst[0] = htonl(remote.address().to_v4().to_uint());
    question.request.id.idiag_cookie[0] = INET_DIAG_NOCOOKIE;
    question.request.id.idiag_cookie[1] = INET_DIAG_NOCOOKIE;
    return question;
}

} // namespace

std::optional<SocketOwner> AskSocket(const tcp::endpoint& local, const tcp::endpoint& remote)
{
    if (!local.address().is_v4() || !remote.address().is_v4())
        return std::nullopt;
    const Descriptor socket(::socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC, NETLINK_SOCK_DIAG));
    const Question question = MakeQuestion(local, remote);
    if (!socket.IsOpen() ||
        ::send(socket.Get(), &question, sizeof question, 0) != static_cast<ssize_t>(sizeof question))
        return std::nullopt;
    std::array<char, 8192> answer;
    // The kernel has answered when the question has been sent.
    const ssize_t size = ::recv(socket.Get(), answer.data(), answer.size(), MSG_DONTWAIT);
    nlmsghdr header{};
    inet_diag_msg found{};
    if (size < static_cast<ssize_t>(NLMSG_LENGTH(sizeof found)))
        return std::nullopt;
    std::memcpy(&header, answer.data(), sizeof header);
    if (header.nlmsg_type != SOCK_DIAG_BY_FAMILY)
        return std::nullopt;
    std::memcpy(&found, answer.data() + NLMSG_HDRLEN, sizeof found);
    // When the connection is gone, the kernel may give a socket that listens at the same port.
    const bool sameEnds = found.id.idiag_sport == question.request.id.idiag_sport &&
                          found.id.idiag_dport == question.request.id.idiag_dport;
    if (!sameEnds || found.idiag_inode == 0)
        return std::nullopt;
    return SocketOwner{found.idiag_uid, found.idiag_inode};
}

} // namespace zettransport
