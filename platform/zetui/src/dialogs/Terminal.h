#pragma once

#include <cstdio>

/// The questions that the terminal presentation asks the system. Main thread.
namespace zetui::dialogs {

/// True for a stream that understands cursor and erase sequences. Where these have to be switched on, this
/// does it.
bool IsTerminal(std::FILE* stream);
/// The terminal's present width, else the environment's `COLUMNS`, else 80.
int TerminalColumns(std::FILE* stream);
/// The width of a stream that has none of its own.
int ColumnsOfEnvironment();

/// Makes Ctrl-C (and SIGTERM, on Windows Ctrl-Break) an answer while at least one of these exists. The first
/// becomes a flag. A second one, before the last of these is gone, ends the program as usual, so that a
/// program that hangs can always be stopped. A signal that was ignored before stays ignored.
class InterruptWatch
{
  public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// True once after each Ctrl-C.
    static bool Take();
};

} // namespace zetui::dialogs
