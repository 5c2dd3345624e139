#include "dialogs/Terminal.h"

#include <io.h>
#include <windows.h>

#include <atomic>

namespace zetui::dialogs {

namespace {

std::atomic<bool> pending{false};
std::atomic<int> presses{0};
int watches = 0;

BOOL WINAPI OnControlEvent(DWORD event)
{
    // A program that has started this one as a group of its own can send it Ctrl-Break, and no Ctrl-C.
    const bool asksToEnd = event == CTRL_C_EVENT || event == CTRL_BREAK_EVENT;
    if (!asksToEnd || presses.fetch_add(1) > 0)
        return FALSE; // the next handler, at last the system's, ends the program
    pending = true;
    return TRUE;
}

HANDLE ConsoleOf(std::FILE* stream)
{
    return reinterpret_cast<HANDLE>(::_get_osfhandle(::_fileno(stream)));
}

} // namespace

bool IsTerminal(std::FILE* stream)
{
    DWORD mode = 0;
    const HANDLE console = ConsoleOf(stream);
    return ::GetConsoleMode(console, &mode) &&
           ::SetConsoleMode(console, mode | ENABLE_PROCESSED_OUTPUT | ENABLE_VIRTUAL_TERMINAL_PROCESSING) !=
               FALSE;
}

int TerminalColumns(std::FILE* stream)
{
    CONSOLE_SCREEN_BUFFER_INFO info = {};
    if (::GetConsoleScreenBufferInfo(ConsoleOf(stream), &info))
        return info.srWindow.Right - info.srWindow.Left + 1;
    return ColumnsOfEnvironment();
}

InterruptWatch::InterruptWatch()
{
    if (watches++ > 0)
        return;
    pending = false;
    presses = 0;
    ::SetConsoleCtrlHandler(OnControlEvent, TRUE);
}

InterruptWatch::~InterruptWatch()
{
    if (--watches == 0)
        ::SetConsoleCtrlHandler(OnControlEvent, FALSE);
}

bool InterruptWatch::Take()
{
    return pending.exchange(false);
}

} // namespace zetui::dialogs
