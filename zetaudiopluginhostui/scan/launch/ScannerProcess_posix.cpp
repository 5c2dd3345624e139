#include "scan/launch/ScannerProcess.h"

#include <fcntl.h>
#include <signal.h>
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
#include <zetcore/process/SpawnProgram.h>
#include <zetcore/string/OutputTail.h>

#include "scan/launch/ScannerOutput_posix.h"

namespace zetaudiopluginhostui {

namespace {

using zetcore::process::nullDevice;

constexpr std::size_t mostOutputCharacters = 300;

/// Holds the processes that this process has started and not yet collected. A scanner whose handle was given
/// up stays here. So it can write to standard error while it lives, and is collected at the next launch after
/// its end.
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
            return; // The process has ended, and its number may be another process's by now.
        ::kill(pid, SIGKILL);
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
        processes.erase(found);
    }

  private:
    struct Process
    {
        pid_t pid = 0;
        /// Null when the system had no pipe left. Then the process writes to our standard error itself.
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

ScannerProcessEnd EndOf(const siginfo_t& info)
{
    const std::string number = std::to_string(info.si_status);
    if (info.si_code == CLD_EXITED)
        return {ScannerProcessEnd::How::Exited, number, {}};
    const char* const words = ::sigdescr_np(info.si_status);
    return {ScannerProcessEnd::How::WasEnded,
            number + (words ? std::string(" (") + words + ")" : std::string()),
            {}};
}

std::unique_ptr<ScannerOutput> MakeOutput()
{
    try {
        return std::make_unique<ScannerOutput>();
    } catch (const std::system_error&) {
        return nullptr;
    }
}

/// Ours, when there is no pipe.
int StandardError(const ScannerOutput* output)
{
    if (output)
        return output->ScannerEnd();
    return ::fcntl(STDERR_FILENO, F_GETFD) < 0 ? nullDevice : STDERR_FILENO;
}

} // namespace

std::wstring ScannerFileName()
{
    return L"zetaudiofilterscan";
}

ScannerProcess StartScannerProcess(const zetcore::filesupport::File& program)
{
    std::unique_ptr<ScannerOutput> output = MakeOutput();
    std::error_code error;
    const int pid = zetcore::process::SpawnProgram(
        {program.FullPathUTF8(), {}, {nullDevice, nullDevice, StandardError(output.get())}}, error);
    if (error)
        throw zetcore::filesupport::file_exception("start the scanner program", program.FullPath(), error);
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
    // If the host collects the ends of all its children, there is no status to look at.
    ScannerProcessEnd end = known ? EndOf(info) : ScannerProcessEnd{};
    end.lastOutput = zetcore::string::TidyLine(Started().LastLine(pid), mostOutputCharacters);
    return end;
}

void EndScannerProcess(ScannerProcess process)
{
    if (process)
        Started().Kill(static_cast<pid_t>(process.handle));
}

} // namespace zetaudiopluginhostui
