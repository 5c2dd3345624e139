#include "WorkerProcessSetup.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace zetaudiofilterscan {

namespace {

// Waits for the worker's end and then kills what its plug-ins have started. When the supervisor is killed
// itself, as hosts do at the end of a scan, nobody else is left to do so.
[[noreturn]] void GuardGroup(pid_t worker)
{
    sigset_t all;
    ::sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, nullptr);
    const auto watched = static_cast<int>(::syscall(SYS_pidfd_open, worker, 0));
    if (watched < 0)
        ::_exit(0);
    // The child must not keep the worker's channel and output open.
    if (watched > 0)
        ::close_range(0, static_cast<unsigned>(watched) - 1, 0);
    ::close_range(static_cast<unsigned>(watched) + 1, ~0U, 0);
    pollfd entry{watched, POLLIN, 0};
    while (::getppid() == worker && ::poll(&entry, 1, -1) < 0) {
    }
    ::kill(0, SIGKILL);
    ::_exit(0);
}

void StartGroupGuard()
{
    const pid_t worker = ::getpid();
    // This works like `fork`, but the child's end sends no signal: a plug-in that waits for any child of its
    // process must not wait for this one.
    if (::syscall(SYS_clone, 0L, nullptr, nullptr, nullptr, nullptr) == 0)
        GuardGroup(worker);
}

/// Names something in the place of a display that is missing or to be hidden.
void ReplaceDisplay(const char* variable, const char* noDisplay, bool hide)
{
    const char* const value = std::getenv(variable);
    if (hide || !value || !*value)
        ::setenv(variable, noDisplay, 1);
}

} // namespace

void SetUpWorkerProcess(std::uint64_t parentProcess)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    // A parent that ended before the line above sends nothing any more. The second condition keeps somebody
    // who calls this program by hand from losing the shell's group.
    if (static_cast<std::uint64_t>(::getppid()) != parentProcess || ::getpgrp() != ::getpid())
        EndWorkerProcess(0);
    ::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0);
    const rlimit none{0, 0};
    ::setrlimit(RLIMIT_CORE, &none);
    StartGroupGuard();
    // A pipe would make it block-buffered, and a crash would lose what the plug-in said last.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

void ChooseDisplay(bool hide)
{
    // Neither can be a display's name: the first has no number, and the second is a path that is no socket.
    ReplaceDisplay("DISPLAY", "none", hide);
    ReplaceDisplay("WAYLAND_DISPLAY", "/dev/null", hide);
}

void EndWorkerProcess(int exitCode)
{
    ::_exit(exitCode);
}

} // namespace zetaudiofilterscan
