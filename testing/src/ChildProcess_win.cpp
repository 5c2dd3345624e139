#include <zettesting/ChildProcess.h>

#include <array>
#include <atomic>
#include <condition_variable>
#include <mutex>
#include <stdexcept>
#include <thread>

#include <windows.h>

#include <tlhelp32.h>

#include <zetcore/string/Utf.h>
#include <zettesting/Emulation.h>

namespace zettesting {

namespace {

using Clock = std::chrono::steady_clock;

struct CloseIt
{
    using pointer = HANDLE;
    void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using Handle = std::unique_ptr<HANDLE, CloseIt>;

/// Quotes an argument for the rules of `CommandLineToArgvW` and the C library.
std::wstring Quote(const std::wstring& argument)
{
    std::wstring quoted = L"\"";
    std::size_t backslashes = 0;
    for (const wchar_t unit : argument) {
        if (unit == L'\\') {
            ++backslashes;
            continue;
        }
        quoted.append(unit == L'"' ? backslashes * 2 + 1 : backslashes, L'\\');
        backslashes = 0;
        quoted += unit;
    }
    return quoted.append(backslashes * 2, L'\\') + L'"';
}

struct LessIgnoringCase
{
    bool operator()(const std::wstring& left, const std::wstring& right) const
    {
        return ::CompareStringOrdinal(left.c_str(), -1, right.c_str(), -1, TRUE) == CSTR_LESS_THAN;
    }
};

std::wstring EnvironmentOf(const ChildProcess::Options& options)
{
    std::map<std::wstring, std::wstring, LessIgnoringCase> variables;
    wchar_t* const block = ::GetEnvironmentStringsW();
    for (const wchar_t* entry = block; *entry; entry += std::wcslen(entry) + 1) {
        const std::wstring text = entry;
        const std::size_t equals = text.find(L'=', 1);
        if (equals != std::wstring::npos)
            variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    ::FreeEnvironmentStringsW(block);
    for (const auto& [name, value] : options.environment) {
        if (value)
            variables[zetcore::string::UTF8to16(name)] = zetcore::string::UTF8to16(*value);
        else
            variables.erase(zetcore::string::UTF8to16(name));
    }
    std::wstring entries;
    for (const auto& [name, value] : variables)
        entries.append(name).append(L"=").append(value).push_back(L'\0');
    entries.push_back(L'\0');
    return entries;
}

BOOL WINAPI IgnoreCtrlC(DWORD event)
{
    return event == CTRL_C_EVENT;
}

void MakePipe(Handle& read, Handle& write)
{
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    HANDLE readEnd = nullptr, writeEnd = nullptr;
    if (!::CreatePipe(&readEnd, &writeEnd, &inheritable, 0))
        throw std::runtime_error("cannot make a pipe");
    read.reset(readEnd);
    write.reset(writeEnd);
    ::SetHandleInformation(readEnd, HANDLE_FLAG_INHERIT, 0);
}

} // namespace

struct ChildProcess::State
{
    Handle process, output, error;
    DWORD id = 0;
    Clock::time_point started = Clock::now();
    std::array<std::thread, 2> readers;
    std::array<std::atomic<DWORD>, 2> readerIds{};
    std::mutex mutex;
    std::condition_variable changed;
    // The mutex guards these until the readers have ended.
    ChildResult result;
    int open = 2;
    // Only the waiting thread uses these.
    bool ended = false;

    ~State() { StopReading(); }

    void StopReading()
    {
        for (std::size_t index = 0; index < readers.size(); ++index) {
            if (!readers[index].joinable())
                continue;
            const Handle thread(::OpenThread(THREAD_TERMINATE, FALSE, readerIds[index]));
            ::CancelSynchronousIo(thread.get());
            readers[index].join();
        }
    }

    void StartReading()
    {
        readers[0] = std::thread([this] { Read(0, output.get(), result.output); });
        readers[1] = std::thread([this] { Read(1, error.get(), result.error); });
    }

    void Read(std::size_t index, HANDLE source, std::string& text)
    {
        readerIds[index] = ::GetCurrentThreadId();
        std::array<char, 65536> buffer;
        DWORD count = 0;
        while (::ReadFile(source, buffer.data(), static_cast<DWORD>(buffer.size()), &count, nullptr) &&
               count) {
            const std::lock_guard lock(mutex);
            text.append(buffer.data(), count);
            changed.notify_all();
        }
        const std::lock_guard lock(mutex);
        --open;
        changed.notify_all();
    }
};

ChildProcess::ChildProcess(const Options& options) : state(std::make_unique<State>())
{
    Handle outputWrite, errorWrite;
    MakePipe(state->output, outputWrite);
    MakePipe(state->error, errorWrite);
    SECURITY_ATTRIBUTES inheritable{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
    const Handle input(::CreateFileW(L"NUL", GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, &inheritable,
                                     OPEN_EXISTING, 0, nullptr));
    std::wstring commandLine = Quote(options.program.wstring());
    for (const std::string& argument : options.arguments)
        commandLine += L" " + Quote(zetcore::string::UTF8to16(argument));
    std::wstring environment = EnvironmentOf(options);
    // A console is one more process to start.
    const DWORD flags =
        CREATE_UNICODE_ENVIRONMENT | (options.interruptible ? CREATE_NO_WINDOW : DETACHED_PROCESS);
    STARTUPINFOW startup{};
    startup.cb = sizeof(startup);
    startup.dwFlags = STARTF_USESTDHANDLES;
    startup.hStdInput = input.get();
    startup.hStdOutput = outputWrite.get();
    startup.hStdError = errorWrite.get();
    PROCESS_INFORMATION information{};
    const auto start = [&] {
        return ::CreateProcessW(options.program.wstring().c_str(), commandLine.data(), nullptr, nullptr, TRUE,
                                flags, environment.data(),
                                options.folder.empty() ? nullptr : options.folder.wstring().c_str(), &startup,
                                &information) != FALSE;
    };
    // Among some thousand programs that Wine starts, one fails with an internal error of Wine's.
    bool started = start();
    for (int again = 0; !started && again < 3 && ::GetLastError() == ERROR_INTERNAL_ERROR && IsWine();
         ++again)
        started = start();
    if (!started)
        throw std::runtime_error("cannot start " + options.program.string() + ": error " +
                                 std::to_string(::GetLastError()));
    ::CloseHandle(information.hThread);
    state->process.reset(information.hProcess);
    state->id = information.dwProcessId;
    state->StartReading();
}

ChildProcess::~ChildProcess()
{
    Kill();
}

const ChildResult& ChildProcess::Wait(std::chrono::milliseconds limit)
{
    if (state->ended)
        return state->result;
    const bool ended =
        ::WaitForSingleObject(state->process.get(), static_cast<DWORD>(limit.count())) == WAIT_OBJECT_0;
    if (!ended) {
        Kill();
        ::WaitForSingleObject(state->process.get(), INFINITE);
    }
    const auto finished = Clock::now();
    state->ended = true;
    bool heldOpen = false;
    {
        std::unique_lock lock(state->mutex);
        heldOpen =
            !state->changed.wait_for(lock, std::chrono::seconds(10), [this] { return state->open == 0; });
    }
    state->StopReading();
    DWORD status = 0;
    ::GetExitCodeProcess(state->process.get(), &status);
    ChildResult& result = state->result;
    result.outputHeldOpen = heldOpen;
    result.timedOut = !ended;
    result.duration = finished - state->started;
    for (std::string* const text : {&result.output, &result.error})
        for (std::size_t at = 0; (at = text->find("\r\n", at)) != std::string::npos;)
            text->erase(at, 1);
    // An exception's code takes the place of a signal.
    const bool exited = ended && status < 0x80000000u;
    result.exitStatus = exited ? static_cast<int>(status) : -1;
    result.signal = exited ? 0 : static_cast<int>(status);
    return result;
}

bool ChildProcess::WaitForError(std::string_view text, std::chrono::milliseconds limit)
{
    std::unique_lock lock(state->mutex);
    const auto contains = [&] { return state->result.error.find(text) != std::string::npos; };
    state->changed.wait_for(lock, limit, [&] { return state->open == 0 || contains(); });
    return contains();
}

void ChildProcess::Interrupt()
{
    if (state->ended)
        return;
    // The event reaches every process that shares the sender's console.
    ::FreeConsole();
    const bool attached = ::AttachConsole(state->id) != FALSE;
    ::SetConsoleCtrlHandler(&IgnoreCtrlC, TRUE);
    const bool sent = attached && ::GenerateConsoleCtrlEvent(CTRL_C_EVENT, 0);
    ::FreeConsole();
    ::AttachConsole(ATTACH_PARENT_PROCESS);
    if (!sent)
        throw std::runtime_error("cannot press Ctrl-C in the child's console");
}

void ChildProcess::Terminate()
{
    Interrupt();
}

void ChildProcess::Kill()
{
    if (!state->ended)
        ::TerminateProcess(state->process.get(), 1);
}

std::vector<std::string> ProcessesWithEnvironment(const std::string&, Starting)
{
    std::vector<std::string> found;
    const Handle snapshot(::CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0));
    PROCESSENTRY32W entry{};
    entry.dwSize = sizeof(entry);
    for (BOOL more = ::Process32FirstW(snapshot.get(), &entry); more;
         more = ::Process32NextW(snapshot.get(), &entry)) {
        if (zetcore::string::EqualIgnoringCase(entry.szExeFile, L"zetaudiofilterscan.exe"))
            found.push_back(std::to_string(entry.th32ProcessID) + " zetaudiofilterscan.exe");
    }
    return found;
}

} // namespace zettesting
