#include "supervisor/workers/WorkerSpawner.h"

#include <array>
#include <atomic>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <zetaudiopluginhost/ReasonSentences.h>

#include "WorkerArguments.h"
#include "supervisor/workers/SpawnedWorker_win.h"

namespace zetaudiofilterscan {

namespace {

[[noreturn]] void Throw(const char* what)
{
    throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(), what);
}

Handle Check(HANDLE handle, const char* what)
{
    Handle owned(handle);
    if (!owned.IsOpen())
        Throw(what);
    return owned;
}

SECURITY_ATTRIBUTES Inheritable()
{
    return {sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
}

struct PipeEnds
{
    Handle ours;
    Handle theirs;
};

// Anonymous pipes cannot be waited for, so these are named ones, whose name nobody else gets to use.
PipeEnds MakePipe(bool twoWay)
{
    static std::atomic<unsigned> count{0};
    const std::wstring name = L"\\\\.\\pipe\\zetaudiofilterscan-" + std::to_wstring(::GetCurrentProcessId()) +
                              L"-" + std::to_wstring(++count);
    const DWORD direction = twoWay ? PIPE_ACCESS_DUPLEX : PIPE_ACCESS_INBOUND;
    PipeEnds ends;
    ends.ours = Check(
        ::CreateNamedPipeW(name.c_str(), direction | FILE_FLAG_OVERLAPPED | FILE_FLAG_FIRST_PIPE_INSTANCE,
                           PIPE_TYPE_BYTE | PIPE_READMODE_BYTE | PIPE_WAIT | PIPE_REJECT_REMOTE_CLIENTS, 1,
                           65536, 65536, 0, nullptr),
        "CreateNamedPipe");
    SECURITY_ATTRIBUTES inheritable = Inheritable();
    const DWORD access = twoWay ? GENERIC_READ | GENERIC_WRITE : GENERIC_WRITE | FILE_READ_ATTRIBUTES;
    ends.theirs = Check(::CreateFileW(name.c_str(), access, 0, &inheritable, OPEN_EXISTING, 0, nullptr),
                        "open the pipe");
    return ends;
}

Handle MakeJob()
{
    Handle job = Check(::CreateJobObjectW(nullptr, nullptr), "CreateJobObject");
    JOBOBJECT_EXTENDED_LIMIT_INFORMATION limits = {};
    limits.BasicLimitInformation.LimitFlags =
        JOB_OBJECT_LIMIT_KILL_ON_JOB_CLOSE | JOB_OBJECT_LIMIT_DIE_ON_UNHANDLED_EXCEPTION;
    if (!::SetInformationJobObject(job.Get(), JobObjectExtendedLimitInformation, &limits, sizeof limits))
        Throw("SetInformationJobObject");
    return job;
}

std::wstring OwnProgram()
{
    std::wstring path(32768, L'\0');
    const DWORD length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length == 0)
        Throw("GetModuleFileName");
    path.resize(length);
    return path;
}

// The child inherits these handles and no others, and is in the job from its start: the system ends it with
// this process, whenever that ends.
class StartAttributes
{
  public:
    StartAttributes(std::vector<HANDLE> inherited, HANDLE jobOfChild)
        : handles(std::move(inherited)), job(jobOfChild)
    {
        constexpr DWORD count = 2;
        SIZE_T size = 0;
        ::InitializeProcThreadAttributeList(nullptr, count, 0, &size);
        memory.resize(size);
        if (!::InitializeProcThreadAttributeList(Get(), count, 0, &size))
            Throw("InitializeProcThreadAttributeList");
        if (!::UpdateProcThreadAttribute(Get(), 0, PROC_THREAD_ATTRIBUTE_HANDLE_LIST, handles.data(),
                                         handles.size() * sizeof(HANDLE), nullptr, nullptr)) {
            const DWORD error = ::GetLastError();
            ::DeleteProcThreadAttributeList(Get());
            ::SetLastError(error);
            Throw("UpdateProcThreadAttribute");
        }
        // A system that refuses this starts the child outside. PutIntoJob finds it there.
        ::UpdateProcThreadAttribute(Get(), 0, PROC_THREAD_ATTRIBUTE_JOB_LIST, &job, sizeof job, nullptr,
                                    nullptr);
    }
    ~StartAttributes() { ::DeleteProcThreadAttributeList(Get()); }
    StartAttributes(const StartAttributes&) = delete;
    StartAttributes& operator=(const StartAttributes&) = delete;

    LPPROC_THREAD_ATTRIBUTE_LIST Get()
    {
        return reinterpret_cast<LPPROC_THREAD_ATTRIBUTE_LIST>(memory.data());
    }

  private:
    std::vector<HANDLE> handles;
    HANDLE job;
    std::vector<unsigned char> memory;
};

// A worker that the system has started outside comes in here. It starts nothing before its first message,
// which is not sent yet, and ends by itself when its channel closes before that.
void PutIntoJob(const SpawnedWorker& worker)
{
    BOOL isThere = FALSE;
    if (::IsProcessInJob(worker.process.Get(), worker.job.Get(), &isThere) && isThere)
        return;
    if (!::AssignProcessToJobObject(worker.job.Get(), worker.process.Get())) {
        const DWORD error = ::GetLastError();
        ::TerminateProcess(worker.process.Get(), 1);
        ::SetLastError(error);
        Throw("AssignProcessToJobObject");
    }
}

std::uint64_t Number(const Handle& handle)
{
    return reinterpret_cast<std::uintptr_t>(handle.Get());
}

std::wstring CommandLine(const std::wstring& program, const WorkerArguments& arguments)
{
    std::wstring line = L"\"" + program + L"\"";
    for (const std::string& argument : arguments.ToArguments())
        line += L" " + std::wstring(argument.begin(), argument.end());
    return line;
}

} // namespace

struct WorkerSpawner::System
{};

WorkerSpawner::WorkerSpawner() = default;

WorkerSpawner::~WorkerSpawner() = default;

void WorkerSpawner::End() noexcept {}

SpawnedWorker WorkerSpawner::Spawn()
{
    SpawnedWorker worker;
    PipeEnds channel = MakePipe(true);
    PipeEnds output = MakePipe(false);
    SECURITY_ATTRIBUTES inheritable = Inheritable();
    const Handle page = Check(
        ::CreateFileMappingW(INVALID_HANDLE_VALUE, &inheritable, PAGE_READWRITE, 0, workerPageBytes, nullptr),
        "CreateFileMapping");
    const Handle input = Check(::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                             &inheritable, OPEN_EXISTING, 0, nullptr),
                               "open NUL");
    worker.page.reset(static_cast<WorkerPage*>(
        ::MapViewOfFile(page.Get(), FILE_MAP_READ | FILE_MAP_WRITE, 0, 0, workerPageBytes)));
    if (!worker.page)
        Throw("MapViewOfFile");
    worker.job = MakeJob();

    StartAttributes attributes({input.Get(), output.theirs.Get(), channel.theirs.Get(), page.Get()},
                               worker.job.Get());
    STARTUPINFOEXW startup = {};
    startup.StartupInfo.cb = sizeof startup;
    startup.StartupInfo.dwFlags = STARTF_USESTDHANDLES;
    startup.StartupInfo.hStdInput = input.Get();
    startup.StartupInfo.hStdOutput = output.theirs.Get();
    startup.StartupInfo.hStdError = output.theirs.Get();
    startup.lpAttributeList = attributes.Get();

    const std::wstring program = OwnProgram();
    std::wstring line = CommandLine(program, {Number(channel.theirs), Number(page), ::GetCurrentProcessId()});
    PROCESS_INFORMATION started = {};
    if (!::CreateProcessW(program.c_str(), line.data(), nullptr, nullptr, TRUE,
                          CREATE_NO_WINDOW | EXTENDED_STARTUPINFO_PRESENT, nullptr, nullptr,
                          &startup.StartupInfo, &started))
        Throw(zetaudiopluginhost::reasons::InEnglish(zetaudiopluginhost::reasons::noWorker).c_str());
    worker.process = Handle(started.hProcess);
    const Handle thread(started.hThread);
    PutIntoJob(worker);
    worker.channel = std::move(channel.ours);
    worker.output = std::move(output.ours);
    return worker;
}

} // namespace zetaudiofilterscan
