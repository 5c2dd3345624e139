#include "terminal/Console.h"

#include <array>
#include <cstdlib>
#include <memory>

#include <windows.h>

#include <io.h>
#include <shellapi.h>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

HANDLE HandleOf(std::FILE* stream)
{
    return reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(stream)));
}

} // namespace

std::vector<std::string> CommandLineArguments(int, const char* const*)
{
    // The narrow arguments have lost what the system's code page does not hold.
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&::LocalFree)> wide(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), &::LocalFree);
    std::vector<std::string> arguments;
    for (int index = 1; wide && index < count; ++index)
        arguments.push_back(zetcore::string::UTF16to8(wide.get()[index]));
    return arguments;
}

// The console keeps its code page when the program has ended, and older programs rely on theirs.
struct PreparedConsole::Before
{
    UINT codePage = ::GetConsoleOutputCP();
};

PreparedConsole::PreparedConsole() : before(std::make_unique<Before>())
{
    ::SetConsoleOutputCP(CP_UTF8);
}

PreparedConsole::~PreparedConsole()
{
    std::fflush(stdout);
    std::fflush(stderr);
    if (before->codePage != 0)
        ::SetConsoleOutputCP(before->codePage);
}

void LeaveOwnConsole()
{
    std::array<DWORD, 2> processes{};
    if (::GetConsoleProcessList(processes.data(), static_cast<DWORD>(processes.size())) != 1)
        return;
    // What is written from now on has no reader. A file or a pipe stays what it is.
    for (std::FILE* const stream : {stdout, stderr}) {
        if (IsTerminal(stream) && !std::freopen("NUL", "w", stream))
            return;
    }
    ::FreeConsole();
}

std::string EnvironmentText(const std::string& name)
{
    const wchar_t* const value = ::_wgetenv(zetcore::string::UTF8to16(name).c_str());
    return value ? zetcore::string::UTF16to8(value) : std::string();
}

void SetEnvironmentText(const std::string& name, const std::string& value)
{
    ::_wputenv_s(zetcore::string::UTF8to16(name).c_str(), zetcore::string::UTF8to16(value).c_str());
}

bool IsTerminal(std::FILE* stream)
{
    DWORD mode = 0;
    return ::GetConsoleMode(HandleOf(stream), &mode) != 0;
}

std::size_t ConsoleWidth()
{
    if (!IsTerminal(stdout))
        return 0;
    CONSOLE_SCREEN_BUFFER_INFO info{};
    if (::GetConsoleScreenBufferInfo(HandleOf(stdout), &info) && info.srWindow.Right >= info.srWindow.Left)
        return static_cast<std::size_t>(info.srWindow.Right - info.srWindow.Left + 1);
    return 80;
}

bool ConsoleShowsColour()
{
    const char* declined = std::getenv("NO_COLOR");
    if (!IsTerminal(stdout) || (declined && *declined))
        return false;
    DWORD mode = 0;
    ::GetConsoleMode(HandleOf(stdout), &mode);
    return ::SetConsoleMode(HandleOf(stdout), mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0;
}

OutputDiversion::OutputDiversion()
{
    std::fflush(stdout);
    output = ::_dup(::_fileno(stdout));
    if (output >= 0) {
        ::_dup2(::_fileno(stderr), ::_fileno(stdout));
        ::SetStdHandle(STD_OUTPUT_HANDLE, HandleOf(stdout));
    }
}

OutputDiversion::~OutputDiversion()
{
    std::fflush(stdout);
    if (output >= 0) {
        ::_dup2(output, ::_fileno(stdout));
        ::_close(output);
        ::SetStdHandle(STD_OUTPUT_HANDLE, HandleOf(stdout));
    }
}

} // namespace zetaudiopluginmanager
