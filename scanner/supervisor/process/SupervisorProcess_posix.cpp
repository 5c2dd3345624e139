#include "supervisor/process/SupervisorProcess.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <fstream>
#include <string>
#include <system_error>

#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <zetcore/debug/Trace.h>

#include "TraceCategory.h"

namespace zetaudiofilterscan {

namespace {

constexpr std::array requestsToEnd = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

// Sample libraries are the ones that open many.
constexpr rlim_t mostFiles = 8192;
// More than the whole system runs now. The limit counts all of the user's, and other programs start some too.
constexpr rlim_t roomForProcesses = 4096;

void TraceLastError(const std::string& what)
{
    zetcore::debug::TraceLine(1, traceCategory, what + ": " + std::system_category().message(errno));
}

/// The limit never rises above the present one.
void Lower(__rlimit_resource resource, rlim_t most, const char* what)
{
    rlimit limit{};
    bool done = ::getrlimit(resource, &limit) == 0;
    limit.rlim_max = std::min(limit.rlim_max, most);
    limit.rlim_cur = std::min(limit.rlim_cur, limit.rlim_max);
    done = done && ::setrlimit(resource, &limit) == 0;
    if (!done)
        TraceLastError(std::string(what) + " cannot be limited");
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

} // namespace

void SetUpSupervisorProcess()
{
    // Service managers send SIGTERM to every process of a service. The host ends the scan then, and the
    // connection's end is the end of this process; ending sooner would look like the plug-in's fault.
    for (const int signal : requestsToEnd)
        std::signal(signal, SIG_IGN);
    // Without the second one, a file that may not grow any more would be the end of the process, and not an
    // error of the write.
    for (const int signal : {SIGPIPE, SIGXFSZ})
        std::signal(signal, SIG_IGN);
    // A host that ignores it would make the workers vanish before their end was seen.
    std::signal(SIGCHLD, SIG_DFL);
    // A process that a plug-in has started becomes this process's child when its worker ends, so that its end
    // can be waited for.
    if (::prctl(PR_SET_CHILD_SUBREAPER, 1, 0, 0, 0) != 0)
        TraceLastError("the processes of plug-ins cannot be waited for");
    // If the host has left one of these closed, a socket of ours would get its number, and everything that
    // is printed.
    for (int descriptor = 0; descriptor >= 0 && descriptor <= STDERR_FILENO;)
        descriptor = ::open("/dev/null", O_RDWR);
}

bool AsksToEnd(std::int64_t signal)
{
    return std::ranges::find(requestsToEnd, signal) != requestsToEnd.end();
}

void GiveUpPrivileges()
{
    if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0)
        TraceLastError("the gaining of privileges cannot be given up");
    Lower(RLIMIT_CORE, 0, "memory images");
    Lower(RLIMIT_NOFILE, mostFiles, "open files");
    if (const rlim_t tasks = RunningTasks(); tasks > 0)
        Lower(RLIMIT_NPROC, tasks + roomForProcesses, "processes");
    else
        zetcore::debug::TraceLine(
            1, traceCategory, "processes cannot be limited: /proc/loadavg does not tell how many there are");
}

void EndSupervisorProcess(int exitCode)
{
    ::_exit(exitCode);
}

} // namespace zetaudiofilterscan
