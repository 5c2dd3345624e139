#include "WorkerPrivileges.h"

#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <span>
#include <system_error>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zetaudiofilterscan {

using zetcore::utility::Reason;

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_X86_64;
// System calls of the variant with 32-bit pointers have this bit.
constexpr std::uint32_t otherNumbers = 0x40000000;
constexpr std::uint32_t oldOpen = __NR_open;
#elif defined(__aarch64__)
constexpr std::uint32_t ownArchitecture = AUDIT_ARCH_AARCH64;
constexpr std::uint32_t otherNumbers = 0xFFFFFFFF;
// This system call does not exist here; no call has the number.
constexpr std::uint32_t oldOpen = 0xFFFFFFFE;
#else
constexpr std::uint32_t ownArchitecture = 0;
constexpr std::uint32_t otherNumbers = 0xFFFFFFFF;
constexpr std::uint32_t oldOpen = 0xFFFFFFFE;
#endif

// The first argument of `kill` for every process that the user may end.
constexpr auto everybody = static_cast<std::uint32_t>(-1);

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

constexpr sock_filter PassOver(std::uint32_t instructions)
{
    return BPF_JUMP(BPF_JMP | BPF_JA, instructions, 0, 0);
}

/// Keeps these bits of the value that was loaded last.
constexpr sock_filter Keep(std::uint32_t bits)
{
    return BPF_STMT(BPF_ALU | BPF_AND | BPF_K, bits);
}

constexpr std::uint32_t Error(int code)
{
    return SECCOMP_RET_ERRNO | (static_cast<std::uint32_t>(code) & SECCOMP_RET_DATA);
}

std::optional<Reason> Install(std::span<const sock_filter> filter, const char* what)
{
    if (ownArchitecture == 0)
        return Reason{std::string(what) + ": the system calls of this processor are not known"};
    sock_fprog program{static_cast<unsigned short>(filter.size()), const_cast<sock_filter*>(filter.data())};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        return LastError(what);
    return std::nullopt;
}

} // namespace

std::optional<Reason> RefuseToEnd(std::uint64_t process)
{
    // The kernel runs this little program for every system call. Of the calls that send a signal to a
    // process, or open it for that, the first argument decides: the process, its group, or everybody.
    const auto number = static_cast<std::uint32_t>(process);
    const auto group = static_cast<std::uint32_t>(-::getpgid(static_cast<pid_t>(process)));
    const std::array filter{
        Load(offsetof(seccomp_data, arch)),
        Compare(BPF_JEQ, ownArchitecture, 0, 11),
        Load(offsetof(seccomp_data, nr)),
        Compare(BPF_JEQ, __NR_kill, 5, 0),
        Compare(BPF_JEQ, __NR_tkill, 4, 0),
        Compare(BPF_JEQ, __NR_tgkill, 3, 0),
        Compare(BPF_JEQ, __NR_rt_sigqueueinfo, 2, 0),
        Compare(BPF_JEQ, __NR_rt_tgsigqueueinfo, 1, 0),
        Compare(BPF_JEQ, __NR_pidfd_open, 0, 4),
        Load(offsetof(seccomp_data, args)),
        Compare(BPF_JEQ, number, 3, 0),
        Compare(BPF_JEQ, group, 2, 0),
        Compare(BPF_JEQ, everybody, 1, 0),
        Return(SECCOMP_RET_ALLOW),
        Return(Error(EPERM)),
    };
    return Install(filter, "the scanner cannot be guarded");
}

std::optional<Reason> RefuseNetwork()
{
    // The program first refuses calls of another architecture, whose numbers mean other calls. Then it looks
    // at the number: calls of the variant with 32-bit pointers and io_uring, whose queues can open sockets
    // past this filter, do not exist; every call but `socket` is allowed. Of `socket` the first argument, the
    // family, decides.
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
    return Install(filter, "the network cannot be refused");
}

std::optional<Reason> RefuseTruncation()
{
    // Opening for writing is refused already. What is left is `truncate`, and opening for reading with the
    // flag that empties the file. The flags of `openat2` are out of reach, so that this call does not exist.
    constexpr std::uint32_t looked = O_TRUNC | O_ACCMODE;
    constexpr std::array filter{
        Load(offsetof(seccomp_data, arch)),
        Compare(BPF_JEQ, ownArchitecture, 1, 0),
        Return(Error(ENOSYS)),
        Load(offsetof(seccomp_data, nr)),
        Compare(BPF_JGE, otherNumbers, 10, 0),
        Compare(BPF_JEQ, __NR_openat2, 9, 0),
        Compare(BPF_JEQ, __NR_truncate, 9, 0),
        Compare(BPF_JEQ, oldOpen, 3, 0),
        Compare(BPF_JEQ, __NR_openat, 0, 5),
        Load(offsetof(seccomp_data, args) + 2 * sizeof(std::uint64_t)),
        PassOver(1),
        Load(offsetof(seccomp_data, args) + sizeof(std::uint64_t)),
        Keep(looked),
        Compare(BPF_JEQ, O_TRUNC | O_RDONLY, 2, 0),
        Return(SECCOMP_RET_ALLOW),
        Return(Error(ENOSYS)),
        Return(Error(EACCES)),
    };
    return Install(filter, "files can still be made shorter by their name");
}

} // namespace zetaudiofilterscan
