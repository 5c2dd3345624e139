#include "terminal/Console.h"

#include <csignal>
#include <cstdlib>
#include <string_view>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace zetaudiopluginmanager {

std::vector<std::string> CommandLineArguments(int count, const char* const* arguments)
{
    return count > 1 ? std::vector<std::string>(arguments + 1, arguments + count)
                     : std::vector<std::string>();
}

struct PreparedConsole::Before
{};

PreparedConsole::PreparedConsole()
{
    // Without this, a write to a file that may not grow any more would end the program. Now the write fails,
    // and the program says so.
    std::signal(SIGXFSZ, SIG_IGN);
}

PreparedConsole::~PreparedConsole() = default;

void LeaveOwnConsole() {}

std::string EnvironmentText(const std::string& name)
{
    const char* const value = std::getenv(name.c_str());
    return value ? value : "";
}

void SetEnvironmentText(const std::string& name, const std::string& value)
{
    ::setenv(name.c_str(), value.c_str(), 1);
}

bool IsTerminal(std::FILE* stream)
{
    return ::isatty(::fileno(stream)) == 1;
}

std::size_t ConsoleWidth()
{
    if (!IsTerminal(stdout))
        return 0;
    winsize size{};
    if (::ioctl(::fileno(stdout), TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    return 80;
}

bool ConsoleShowsColour()
{
    const char* declined = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    return IsTerminal(stdout) && (!declined || !*declined) && terminal && *terminal &&
           std::string_view(terminal) != "dumb";
}

OutputDiversion::OutputDiversion()
{
    std::fflush(stdout);
    output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    if (output >= 0)
        ::dup2(STDERR_FILENO, STDOUT_FILENO);
}

OutputDiversion::~OutputDiversion()
{
    std::fflush(stdout);
    if (output >= 0) {
        ::dup2(output, STDOUT_FILENO);
        ::close(output);
    }
}

} // namespace zetaudiopluginmanager
