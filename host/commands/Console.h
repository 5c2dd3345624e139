#pragma once

#include <cstddef>
#include <cstdio>
#include <string>
#include <vector>

/// The differences between the systems in the terminal that a program runs in. Main thread.
namespace zetaudiopluginmanager {

/// The arguments without the program's name, in UTF-8; bytes that are no UTF-8 stay as they are.
std::vector<std::string> CommandLineArguments(int count, const char* const* arguments);

/// Makes the terminal show UTF-8 where that is not a matter of course.
void PrepareConsole();

/// This process's environment, which the processes that it starts get too. UTF-8; empty for a variable that
/// is not there.
std::string EnvironmentText(const std::string& name);
void SetEnvironmentText(const std::string& name, const std::string& value);

bool IsTerminal(std::FILE* stream);
/// Columns of the terminal that standard output goes to; 0 when it goes elsewhere.
std::size_t ConsoleWidth();
/// True when standard output is a terminal that shows colours and the user has not declined them
/// (`NO_COLOR`).
bool ConsoleShowsColour();

/// While it lives, what anything in this process writes to standard output goes to standard error: plug-ins
/// that are loaded into it talk there.
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
