#include "WorkerPrivileges.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstddef>
#include <fstream>
#include <system_error>

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>

namespace zetaudiofilterscan {

namespace {

// Sample libraries are the ones that open many.
constexpr rlim_t mostFiles = 8192;
// More than the whole system runs now. The limit counts all of the user's, and other programs start some too.
constexpr rlim_t roomForProcesses = 4096;

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

std::string LastError(const char* what)
{
    return std::string(what) + ": " + std::system_category().message(errno);
}

/// Never above what there is already.
std::string Lower(__rlimit_resource resource, rlim_t most, const char* what)
{
    rlimit limit{};
    if (::getrlimit(resource, &limit) != 0)
        return LastError(what);
    limit.rlim_max = std::min(limit.rlim_max, most);
    limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max);
    return ::setrlimit(resource, &limit) == 0 ? std::string() : LastError(what);
}

/// Tasks of the whole system: what stands behind the slash in "0.50 0.40 0.30 2/345 6789".
rlim_t RunningTasks()
{
    std::string text;
    std::getline(std::ifstream("/proc/loadavg"), text);
    rlim_t tasks = 0;
    if (const auto slash = text.find('/'); slash != text.npos)
        std::from_chars(text.data() + slash + 1, text.data() + text.size(), tasks);
    return tasks;
}

constexpr sock_filter Load(std::size_t offset)
{
    return BPF_STMT(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset));
}

constexpr sock_filter Return(std::uint32_t action)
{
    return BPF_STMT(BPF_RET | BPF_K, action);
}

/// `then` and `otherwise` are the numbers of instructions to pass over.
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

std::string LimitResources()
{
    const std::string files = Lower(RLIMIT_NOFILE, mostFiles, "the number of open files cannot be limited");
    const rlim_t tasks = RunningTasks();
    if (tasks == 0)
        return files + (files.empty() ? "" : "; ") +
               "/proc/loadavg does not tell how many processes there are";
    const std::string processes =
        Lower(RLIMIT_NPROC, tasks + roomForProcesses, "the number of processes cannot be limited");
    return files + (files.empty() || processes.empty() ? "" : "; ") + processes;
}

std::string RefuseNetwork()
{
    // The queues for input and output that the kernel works off by itself can open sockets too, past this
    // filter.
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
        return "the network cannot be refused: the system calls of this processor are not known";
    sock_fprog program{static_cast<unsigned short>(filter.size()), const_cast<sock_filter*>(filter.data())};
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
        ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0)
        return LastError("the network cannot be refused");
    return {};
}

} // namespace zetaudiofilterscan
