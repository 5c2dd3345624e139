#pragma once

#include <cstddef>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

/// The terminal that the program runs in, on each system. Main thread.
namespace zetaudiopluginmanager {

/// The arguments without the program's name, in UTF-8. Bytes that are not UTF-8 stay as they are.
std::vector<std::string> CommandLineArguments(int count, const char* const* arguments);

/// While it lives, the terminal shows UTF-8, also where it would not do so by itself.
class PreparedConsole
{
  public:
    PreparedConsole();
    ~PreparedConsole();
    PreparedConsole(const PreparedConsole&) = delete;
    PreparedConsole& operator=(const PreparedConsole&) = delete;

  private:
    struct Before;
    std::unique_ptr<Before> before;
};

/// Leaves a console that the system has opened for this program alone, because it was started with the mouse.
/// Otherwise that would stay beside the window, empty.
void LeaveOwnConsole();

/// A variable of this process's environment, which the processes that it starts inherit. UTF-8. A variable
/// that is not set is empty.
std::string EnvironmentText(const std::string& name);
void SetEnvironmentText(const std::string& name, const std::string& value);

bool IsTerminal(std::FILE* stream);
/// The number of columns of the terminal that standard output goes to. 0 when it goes elsewhere.
std::size_t ConsoleWidth();
/// True when standard output is a terminal that shows colours and the user has not declined them
/// (`NO_COLOR`).
bool ConsoleShowsColour();

/// While it lives, everything that this process writes to standard output goes to standard error. Plug-ins
/// that are loaded into the process may write there.
class OutputDiversion
{
  public:
    OutputDiversion();
    ~OutputDiversion();
    OutputDiversion(const OutputDiversion&) = delete;
    OutputDiversion& operator=(const OutputDiversion&) = delete;

  private:
    int output;
};

} // namespace zetaudiopluginmanager
