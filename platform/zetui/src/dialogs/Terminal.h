#pragma once

#include <cstdio>

/// The terminal presentation asks this of the system. Main thread.
namespace zetui::dialogs {

/// True for a stream that understands cursor and erase sequences; where that has to be switched on, it is.
bool IsTerminal(std::FILE* stream);
/// The terminal's present width, else the environment's `COLUMNS`, else 80.
int TerminalColumns(std::FILE* stream);
/// The width of a stream that has none of its own.
int ColumnsOfEnvironment();

/// Ctrl-C as an answer while at least one of these exists: the first one becomes a flag; a second one before
/// the last of these is gone ends the program as usual, so that a program that hangs can always be stopped.
/// A Ctrl-C that was ignored before stays ignored.
class InterruptWatch
{
  public:
    InterruptWatch();
    ~InterruptWatch();
    InterruptWatch(const InterruptWatch&) = delete;
    InterruptWatch& operator=(const InterruptWatch&) = delete;

    /// True once for each Ctrl-C.
    static bool Take();
};

} // namespace zetui::dialogs
