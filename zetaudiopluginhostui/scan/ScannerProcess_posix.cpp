#include "scan/ScannerProcess.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <mutex>
#include <system_error>
#include <utility>
#include <vector>

#include <zetcore/filesupport/paths/FileException.h>
#include <zetcore/string/OutputTail.h>

#include "scan/ScannerOutput_posix.h"

extern char** environ;

namespace zetaudiopluginhostui {

namespace {

constexpr std::size_t mostOutputCharacters = 300;

/// The processes that this one has started and not yet collected. A scanner whose handle was given up stays
/// here, so that it does not remain a zombie once it has ended, and can write to standard error until then.
class StartedProcesses
{
  public:
    void Add(pid_t pid, std::unique_ptr<ScannerOutput> output)
    {
        const std::lock_guard lock(mutex);
        CollectEnded();
        processes.push_back({pid, std::move(output)});
    }

    std::string LastLine(pid_t pid)
    {
        const std::lock_guard lock(mutex);
        const auto found = Find(pid);
        return found != processes.end() && found->output ? found->output->LastLine() : std::string();
    }

    void Kill(pid_t pid)
    {
        const std::lock_guard lock(mutex);
        CollectEnded();
        const auto found = Find(pid);
        if (found == processes.end())
            return; // it has ended, and its number may be another process's by now
        ::kill(pid, SIGKILL);
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
        processes.erase(found);
    }

  private:
    struct Process
    {
        pid_t pid = 0;
        /// Null when the system had no pipe left; it writes to our standard error itself then.
        std::unique_ptr<ScannerOutput> output;
    };

    std::vector<Process>::iterator Find(pid_t pid)
    {
        return std::find_if(processes.begin(), processes.end(),
                            [pid](const Process& process) { return process.pid == pid; });
    }
    void CollectEnded()
    {
        std::erase_if(processes,
                      [](const Process& process) { return ::waitpid(process.pid, nullptr, WNOHANG) != 0; });
    }

    std::mutex mutex;
    std::vector<Process> processes;
};

StartedProcesses& Started()
{
    static StartedProcesses processes;
    return processes;
}

class SpawnAttributes
{
  public:
    SpawnAttributes()
    {
        ::posix_spawnattr_init(&attributes);
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes, &none);
        ::posix_spawnattr_setsigdefault(&attributes, &all);
        // Its own session: the Ctrl-C of the host's terminal is the host's to deal with.
        ::posix_spawnattr_setflags(&attributes,
                                   POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETSID);
    }
    ~SpawnAttributes() { ::posix_spawnattr_destroy(&attributes); }
    SpawnAttributes(const SpawnAttributes&) = delete;
    SpawnAttributes& operator=(const SpawnAttributes&) = delete;

    const posix_spawnattr_t* Get() const { return &attributes; }

  private:
    posix_spawnattr_t attributes;
};

class SpawnFiles
{
  public:
    explicit SpawnFiles(const ScannerOutput* output)
    {
        ::posix_spawn_file_actions_init(&actions);
        OpenNull(STDIN_FILENO, O_RDONLY);
        OpenNull(STDOUT_FILENO, O_WRONLY);
        if (output)
            ::posix_spawn_file_actions_adddup2(&actions, output->ScannerEnd(), STDERR_FILENO);
        else if (::fcntl(STDERR_FILENO, F_GETFD) < 0)
            OpenNull(STDERR_FILENO, O_WRONLY);
        ::posix_spawn_file_actions_addclosefrom_np(&actions, STDERR_FILENO + 1);
    }
    ~SpawnFiles() { ::posix_spawn_file_actions_destroy(&actions); }
    SpawnFiles(const SpawnFiles&) = delete;
    SpawnFiles& operator=(const SpawnFiles&) = delete;

    const posix_spawn_file_actions_t* Get() const { return &actions; }

  private:
    void OpenNull(int descriptor, int mode)
    {
        ::posix_spawn_file_actions_addopen(&actions, descriptor, "/dev/null", mode, 0);
    }

    posix_spawn_file_actions_t actions;
};

std::string StatusText(const siginfo_t& info)
{
    if (info.si_code == CLD_EXITED)
        return "ended with exit status " + std::to_string(info.si_status);
    const char* const words = ::sigdescr_np(info.si_status);
    return "was ended by signal " + std::to_string(info.si_status) +
           (words ? std::string(" (") + words + ")" : std::string());
}

std::unique_ptr<ScannerOutput> MakeOutput()
{
    try {
        return std::make_unique<ScannerOutput>();
    } catch (const std::system_error&) {
        return nullptr;
    }
}

} // namespace

std::wstring ScannerFileName()
{
    return L"zetaudiofilterscan";
}

ScannerProcess StartScannerProcess(const zetcore::filesupport::File& program)
{
    std::string path = program.FullPathUTF8();
    char* const arguments[] = {path.data(), nullptr};
    const SpawnAttributes attributes;
    std::unique_ptr<ScannerOutput> output = MakeOutput();
    const SpawnFiles files(output.get());
    pid_t pid = 0;
    const int error = ::posix_spawn(&pid, path.c_str(), files.Get(), attributes.Get(), arguments, environ);
    if (error != 0)
        throw zetcore::filesupport::file_exception("start the scanner program", program.FullPath(),
                                                   {error, std::system_category()});
    if (output)
        output->CloseScannerEnd();
    Started().Add(pid, std::move(output));
    return {static_cast<std::uintptr_t>(pid)};
}

std::optional<ScannerProcessEnd> FindScannerProcessEnd(ScannerProcess process)
{
    const auto pid = static_cast<pid_t>(process.handle);
    siginfo_t info = {};
    const bool known = ::waitid(P_PID, static_cast<id_t>(pid), &info, WEXITED | WNOHANG | WNOWAIT) == 0;
    if (known && info.si_pid == 0)
        return std::nullopt;
    // A host that collects the ends of all its children leaves no status to look at.
    return ScannerProcessEnd{known ? StatusText(info) : "ended",
                             zetcore::string::TidyLine(Started().LastLine(pid), mostOutputCharacters)};
}

void EndScannerProcess(ScannerProcess process)
{
    if (process)
        Started().Kill(static_cast<pid_t>(process.handle));
}

} // namespace zetaudiopluginhostui
