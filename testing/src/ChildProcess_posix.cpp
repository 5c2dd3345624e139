#include <zettesting/ChildProcess.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <condition_variable>
#include <csignal>
#include <cstring>
#include <fstream>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <thread>

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

extern char** environ;

namespace zettesting {

namespace {

using Clock = std::chrono::steady_clock;

struct Pipe
{
    Pipe()
    {
        std::array<int, 2> ends{};
        if (::pipe2(ends.data(), O_CLOEXEC) != 0)
            throw std::runtime_error("cannot make a pipe");
        read = ends[0];
        write = ends[1];
    }
    ~Pipe()
    {
        CloseWrite();
        ::close(read);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    void CloseWrite()
    {
        if (write >= 0)
            ::close(write);
        write = -1;
    }

    int read = -1, write = -1;
};

std::vector<std::string> EnvironmentOf(const ChildProcess::Options& options)
{
    std::map<std::string, std::string> variables;
    for (char** entry = environ; *entry; ++entry) {
        const std::string text = *entry;
        const std::size_t equals = text.find('=');
        if (equals != std::string::npos)
            variables[text.substr(0, equals)] = text.substr(equals + 1);
    }
    for (const auto& [name, value] : options.environment) {
        if (value)
            variables[name] = *value;
        else
            variables.erase(name);
    }
    std::vector<std::string> entries;
    for (const auto& [name, value] : variables)
        entries.push_back(name + "=" + value);
    return entries;
}

std::vector<char*> Pointers(std::vector<std::string>& texts)
{
    std::vector<char*> pointers;
    for (std::string& text : texts)
        pointers.push_back(text.data());
    pointers.push_back(nullptr);
    return pointers;
}

/// Runs in the child, where only async-signal-safe calls are allowed.
[[noreturn]] void BecomeProgram(const char* program, char** arguments, char** environment, const char* folder,
                                int output, int error)
{
    const int input = ::open("/dev/null", O_RDONLY);
    ::setpgid(0, 0);
    // A shell makes its background programs ignore this signal, and the child would inherit that.
    ::signal(SIGINT, SIG_DFL);
    if (input < 0 || ::dup2(input, 0) < 0 || ::dup2(output, 1) < 0 || ::dup2(error, 2) < 0 ||
        (*folder && ::chdir(folder) != 0))
        ::_exit(127);
    ::execve(program, arguments, environment);
    ::_exit(127);
}

} // namespace

struct ChildProcess::State
{
    Pipe output, error, stop;
    pid_t process = -1;
    Clock::time_point started = Clock::now();
    std::thread reader;
    std::mutex mutex;
    std::condition_variable changed;
    // The mutex guards these until the reader has ended.
    ChildResult result;
    bool closed = false;
    // Only the waiting thread uses these.
    bool reaped = false;

    ~State()
    {
        if (reader.joinable()) {
            stop.CloseWrite();
            reader.join();
        }
    }

    void Read()
    {
        std::array<pollfd, 3> sources{
            {{output.read, POLLIN, 0}, {error.read, POLLIN, 0}, {stop.read, POLLIN, 0}}};
        std::array<std::string*, 2> texts{&result.output, &result.error};
        std::array<char, 65536> buffer;
        while (sources[0].fd >= 0 || sources[1].fd >= 0) {
            if (::poll(sources.data(), sources.size(), -1) < 0 && errno != EINTR)
                break;
            for (std::size_t index = 0; index < texts.size(); ++index) {
                if (sources[index].fd < 0 || sources[index].revents == 0)
                    continue;
                const ssize_t count = ::read(sources[index].fd, buffer.data(), buffer.size());
                const std::lock_guard lock(mutex);
                if (count > 0)
                    texts[index]->append(buffer.data(), static_cast<std::size_t>(count));
                else if (count == 0 || errno != EINTR)
                    sources[index].fd = -1;
                changed.notify_all();
            }
            if (sources[2].revents != 0)
                break;
        }
        const std::lock_guard lock(mutex);
        closed = sources[0].fd < 0 && sources[1].fd < 0;
        changed.notify_all();
    }

    /// Waits for the end but does not collect it, so that the system does not give the process number to
    /// another process. False at the deadline.
    bool WaitForEnd(Clock::time_point until) const
    {
        siginfo_t info{};
        for (timespec pause{0, 200'000}; Clock::now() < until; ::nanosleep(&pause, nullptr)) {
            info.si_pid = 0;
            if (::waitid(P_PID, static_cast<id_t>(process), &info, WEXITED | WNOHANG | WNOWAIT) == 0 &&
                info.si_pid == process)
                return true;
            pause.tv_nsec = std::min(pause.tv_nsec * 2, 5'000'000L);
        }
        return false;
    }
};

ChildProcess::ChildProcess(const Options& options) : state(std::make_unique<State>())
{
    std::vector<std::string> arguments{options.program.string()};
    arguments.insert(arguments.end(), options.arguments.begin(), options.arguments.end());
    std::vector<std::string> environment = EnvironmentOf(options);
    const std::vector<char*> argumentPointers = Pointers(arguments),
                             environmentPointers = Pointers(environment);
    if (::access(options.program.c_str(), X_OK) != 0)
        throw std::runtime_error("no such program: " + options.program.string());
    state->process = ::fork();
    if (state->process < 0)
        throw std::runtime_error("cannot start a process");
    if (state->process == 0)
        BecomeProgram(options.program.c_str(), const_cast<char**>(argumentPointers.data()),
                      const_cast<char**>(environmentPointers.data()), options.folder.c_str(),
                      state->output.write, state->error.write);
    state->output.CloseWrite();
    state->error.CloseWrite();
    state->reader = std::thread([this] { state->Read(); });
}

ChildProcess::~ChildProcess()
{
    if (!state->reaped) {
        Kill();
        ::waitpid(state->process, nullptr, 0);
    }
}

const ChildResult& ChildProcess::Wait(std::chrono::milliseconds limit)
{
    if (state->reaped)
        return state->result;
    const bool ended = state->WaitForEnd(Clock::now() + limit);
    if (!ended)
        Kill();
    int status = 0;
    ::waitpid(state->process, &status, 0);
    const auto finished = Clock::now();
    state->reaped = true;
    bool heldOpen = false;
    {
        std::unique_lock lock(state->mutex);
        heldOpen = !state->changed.wait_for(lock, std::chrono::seconds(10), [this] { return state->closed; });
    }
    state->stop.CloseWrite();
    state->reader.join();
    ChildResult& result = state->result;
    result.outputHeldOpen = heldOpen;
    result.timedOut = !ended;
    result.duration = finished - state->started;
    result.exitStatus = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    result.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    return result;
}

bool ChildProcess::WaitForError(std::string_view text, std::chrono::milliseconds limit)
{
    std::unique_lock lock(state->mutex);
    const auto contains = [&] { return state->result.error.find(text) != std::string::npos; };
    state->changed.wait_for(lock, limit, [&] { return state->closed || contains(); });
    return contains();
}

void ChildProcess::Interrupt()
{
    if (!state->reaped)
        ::kill(state->process, SIGINT);
}

void ChildProcess::Terminate()
{
    if (!state->reaped)
        ::kill(state->process, SIGTERM);
}

void ChildProcess::Kill()
{
    if (!state->reaped)
        ::kill(state->process, SIGKILL);
}

namespace {

std::string ReadFileOf(const std::filesystem::path& process, const char* name)
{
    // Tests look at all processes again and again, so that this takes whole blocks, not characters.
    std::ostringstream content;
    content << std::ifstream(process / name, std::ios::binary).rdbuf();
    return std::move(content).str();
}

/// The moment at which the system started the process, in its own ticks.
unsigned long long StartOf(const std::filesystem::path& process)
{
    constexpr int fieldsBefore = 19;
    const std::string stat = ReadFileOf(process, "stat");
    std::istringstream fields(stat.substr(std::min(stat.size(), stat.rfind(')') + 1)));
    std::string skipped;
    for (int field = 0; field < fieldsBefore; ++field)
        fields >> skipped;
    unsigned long long start = 0;
    fields >> start;
    return start;
}

// While a process becomes another program, it has memory but no environment for a moment. Some programs never
// show theirs; those that run since before this one are left out. The environment is not read again here: it
// may be there by now, and the process would be missed.
bool MayBeBecomingAProgram(const std::filesystem::path& process)
{
    const std::string pages = ReadFileOf(process, "statm");
    return !pages.empty() && !pages.starts_with('0') && StartOf(process) >= StartOf("/proc/self");
}

} // namespace

std::vector<std::string> ProcessesWithEnvironment(const std::string& text, Starting starting)
{
    std::vector<std::string> found;
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator("/proc", ignored)) {
        const std::string number = entry.path().filename().string();
        if (number.find_first_not_of("0123456789") != std::string::npos ||
            number == std::to_string(::getpid()))
            continue;
        const std::string environment = ReadFileOf(entry.path(), "environ");
        if (environment.find(text) == std::string::npos &&
            (starting == Starting::LeaveOut || !environment.empty() || !MayBeBecomingAProgram(entry.path())))
            continue;
        std::string name;
        std::getline(std::ifstream(entry.path() / "comm"), name);
        found.push_back(number + " " + name);
    }
    return found;
}

} // namespace zettesting
