#include <zettesting/Patience.h>
#include <zettesting/XServer.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <chrono>
#include <csignal>
#include <stdexcept>

#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zettesting {

namespace {

using Clock = std::chrono::steady_clock;

constexpr int numberDescriptor = 3;

/// Nobody else takes a number that comes from this process's own. The lowest free number would be 0 on many
/// machines: plug-ins that are told of no display try that one, and end their process when the server goes.
std::array<char, 16> DisplayOf(pid_t process)
{
    std::array<char, 16> text{':'};
    std::to_chars(text.data() + 1, text.data() + text.size() - 1, 100 + process % 50000);
    return text;
}

/// The server must end when this process ends, even by a crash. `posix_spawn` cannot arrange that.
[[noreturn]] void BecomeServer(int numberPipe)
{
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    const int null = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        ::dup2(null, stream);
    if (numberPipe == numberDescriptor)
        ::fcntl(numberPipe, F_SETFD, 0);
    else
        ::dup2(numberPipe, numberDescriptor);
    const std::array<char, 16> display = DisplayOf(::getpid());
    ::execlp(ZET_XVFB, "Xvfb", display.data(), "-displayfd", "3", "-screen", "0", "1280x1024x24", "-nolisten",
             "tcp", "-noreset", static_cast<char*>(nullptr));
    ::_exit(127);
}

/// Reads a line from the pipe. Empty when the pipe ends, or when nothing comes.
std::string ReadLine(int descriptor)
{
    const auto deadline = Clock::now() + patience;
    std::string line;
    while (line.empty() || line.back() != '\n') {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        pollfd entry{descriptor, POLLIN, 0};
        const int ready = ::poll(&entry, 1, static_cast<int>(std::max<long>(left.count(), 0)));
        if (ready < 0 && errno == EINTR)
            continue;
        char letter = 0;
        if (ready <= 0 || ::read(descriptor, &letter, 1) != 1)
            return {};
        line += letter;
    }
    line.pop_back();
    return line;
}

} // namespace

struct XServer::Process
{
    explicit Process(pid_t number) : pid(number) {}
    ~Process()
    {
        ::kill(pid, SIGKILL);
        while (::waitpid(pid, nullptr, 0) < 0 && errno == EINTR) {
        }
    }
    Process(const Process&) = delete;
    Process& operator=(const Process&) = delete;

    pid_t pid;
};

XServer::XServer()
{
    std::array<int, 2> numberPipe{};
    if (::pipe2(numberPipe.data(), O_CLOEXEC) != 0)
        throw std::runtime_error("cannot make a pipe");
    const pid_t pid = ::fork();
    if (pid == 0)
        BecomeServer(numberPipe[1]);
    ::close(numberPipe[1]);
    if (pid > 0)
        process = std::make_unique<Process>(pid);
    const std::string number = ReadLine(numberPipe[0]);
    ::close(numberPipe[0]);
    if (number.empty())
        throw std::runtime_error(std::string("cannot start an X server (package xvfb): ") + ZET_XVFB);
    display = ":" + number;
}

XServer::~XServer() = default;

} // namespace zettesting
