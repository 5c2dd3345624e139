#include "WorkerProcessSetup.h"

#include <csignal>
#include <cstdio>
#include <cstdlib>

#include <poll.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "PluginHome.h"
#include "ProcessDescriptor_posix.h"

namespace zetaudiofilterscan {

namespace {

// Hosts kill the supervisor at the end of a scan. Nobody else is left then to remove the plug-ins' home.
[[noreturn]] void ClearAwayFor(const char* supervisor, pid_t worker)
{
    ::setpgid(0, 0);
    ::kill(-worker, SIGKILL);
    ::execl("/proc/self/exe", "zetaudiofilterscan", removeHomeOption, supervisor, nullptr);
    ::_exit(0);
}

// False when the time is up.
bool WaitForEnd(int process, int milliseconds)
{
    pollfd entry{process, POLLIN, 0};
    int ready = 0;
    while ((ready = ::poll(&entry, 1, milliseconds)) < 0) {
    }
    return ready > 0;
}

// Waits for the worker's end and then kills what its plug-ins have started, unless the supervisor does so,
// and this process with it. When the supervisor is killed itself, nobody else is left.
[[noreturn]] void GuardGroup(pid_t worker, pid_t supervisor, const char* supervisorNumber)
{
    constexpr int untilSupervisorActs = 1000;
    sigset_t all;
    ::sigfillset(&all);
    ::sigprocmask(SIG_SETMASK, &all, nullptr);
    // The child must not keep the worker's channel and output open.
    ::close_range(0, ~0U, 0);
    const int itsEnd = OpenProcess(worker);
    const int supervisorsEnd = OpenProcess(supervisor);
    if (itsEnd < 0)
        ::_exit(0);
    if (::getppid() == worker)
        WaitForEnd(itsEnd, -1);
    if (supervisorsEnd < 0 || WaitForEnd(supervisorsEnd, untilSupervisorActs))
        ClearAwayFor(supervisorNumber, worker);
    ::kill(0, SIGKILL);
    ::_exit(0);
}

void StartGroupGuard(std::uint64_t supervisor)
{
    const std::string supervisorNumber = std::to_string(supervisor);
    const pid_t worker = ::getpid();
    // This works like `fork`, but the child's end sends no signal: a plug-in that waits for any child of its
    // process must not wait for this one.
    if (::syscall(SYS_clone, 0L, nullptr, nullptr, nullptr, nullptr) == 0)
        GuardGroup(worker, static_cast<pid_t>(supervisor), supervisorNumber.c_str());
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
    StartGroupGuard(parentProcess);
    // A pipe would make it block-buffered, and a crash would lose what the plug-in said last.
    std::setvbuf(stdout, nullptr, _IOLBF, BUFSIZ);
}

void ChooseDisplay(bool hide)
{
    // Neither can be a display's name: the first has no number, and the second is a path that is no socket.
    ReplaceDisplay("DISPLAY", "none", hide);
    ReplaceDisplay("WAYLAND_DISPLAY", "/dev/null", hide);
}

void SetVariables(const std::vector<std::pair<std::string, std::string>>& variables)
{
    for (const auto& [name, value] : variables)
        ::setenv(name.c_str(), value.c_str(), 1);
}

void EndWorkerProcess(int exitCode)
{
    ::_exit(exitCode);
}

} // namespace zetaudiofilterscan
