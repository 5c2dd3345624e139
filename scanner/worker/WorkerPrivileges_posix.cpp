#include "WorkerPrivileges.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <system_error>

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>

namespace zetaudiofilterscan {

using zetcore::utility::Reason;

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_X86_64;
// System calls of the variant with 32-bit pointers have this bit.
constexpr std::uint32_t otherNumbers = 0x40000000;
#elif defined(__aarch64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_AARCH64;
constexpr std::uint32_t otherNumbers = 0xFFFFFFFF;
#else
constexpr std::uint32_t ownArchitecture = 0;
constexpr std::uint32_t otherNumbers = 0xFFFFFFFF;
#endif

Reason LastError(const char* what)
{
    return {std::string(what) + ": " + std::system_category().message(errno)};
}

constexpr sock_filter Load(std::size_t offset)
{
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}

constexpr sock_filter Return(std::uint32_t action)
{
    return BPF_STMT(BPF_RET | BPF_K, action);
}

/// Compares the value that was loaded last. `then` and `otherwise` are the numbers of instructions to pass
/// over when the comparison holds and when it does not.
constexpr sock_filter Compare(std::uint16_t how, std::uint32_t with, std::uint8_t then,
                              std::uint8_t otherwise)
{
    return BPF_JUMP(static_cast<std::uint16_t>(BPF_JMP | how | BPF_K), with, then, otherwise);
}

constexpr std::uint32_t Error(int code)
{
    return SECCOMP_RET_ERRNO | (static_cast<std::uint32_t>(code) & SECCOMP_RET_DATA);
}

} // namespace

std::optional<Reason> RefuseNetwork()
{
    // The kernel runs this little program for every system call. It first refuses calls of another
    // architecture, whose numbers mean other calls. Then it looks at the number: calls of the variant with
    // 32-bit pointers and io_uring, whose queues can open sockets past this filter, do not exist; every call
    // but `socket` is allowed. Of `socket` the first argument, the family, decides.
    constexpr std::array filter{
        Load(offsetof(seccomp_data, arch)),
        Compare(BPF_JEQ, ownArchitecture, 1, 0),
        Return(Error(ENOSYS)),
        Load(offsetof(seccomp_data, nr)),
        Compare(BPF_JGE, otherNumbers, 5, 0),
        Compare(BPF_JEQ, __NR_io_uring_setup, 4, 0),
        Compare(BPF_JEQ, __NR_socket, 0, 4),
        Load(offsetof(seccomp_data, args)),
        Compare(BPF_JEQ, AF_UNIX, 2, 0),
        // News of the machine (devices, interfaces) comes this way; nothing leaves the machine.
        Compare(BPF_JEQ, AF_NETLINK, 1, 2),
        Return(Error(ENOSYS)),
        Return(SECCOMP_RET_ALLOW),
        Return(Error(EACCES)),
    };
    if (ownArchitecture == 0)
        return Reason{"the network cannot be refused: the system calls of this processor are not known"};
    sock_fprog program{static_cast<unsigned short>(filter.size()), const_cast<sock_filter*>(filter.data())};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        return LastError("the network cannot be refused");
    return std::nullopt;
}

} // namespace zetaudiofilterscan
