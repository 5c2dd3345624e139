#include "dialogs/Terminal.h"

#include <signal.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <atomic>
#include <cstdlib>
#include <cstring>

namespace zetui::dialogs {

namespace {

std::atomic<bool> pending{false};
std::atomic<int> presses{0};
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<int>::is_always_lock_free);

int watches = 0;

/// Ctrl-C, and what service managers and parent programs send.
struct WatchedSignal
{
    int number;
    struct sigaction before;
};
WatchedSignal watched[] = {{SIGINT, {}}, {SIGTERM, {}}};

void OnInterrupt(int number)
{
    if (presses.fetch_add(1) > 0) {
        struct sigaction standard = {};
        standard.sa_handler = SIG_DFL;
        ::sigaction(number, &standard, nullptr);
        ::raise(number); // delivered when this handler returns
        return;
    }
    pending = true;
}

} // namespace

bool IsTerminal(std::FILE* stream)
{
    const char* const kind = std::getenv("TERM");
    return ::isatty(::fileno(stream)) && !(kind && std::strcmp(kind, "dumb") == 0);
}

int TerminalColumns(std::FILE* stream)
{
    struct winsize size = {};
    if (::ioctl(::fileno(stream), TIOCGWINSZ, &size) == 0 && size.ws_col > 0)
        return size.ws_col;
    return ColumnsOfEnvironment();
}

InterruptWatch::InterruptWatch()
{
    if (watches++ > 0)
        return;
    pending = false;
    presses = 0;
    for (WatchedSignal& signal : watched) {
        ::sigaction(signal.number, nullptr, &signal.before);
        if (signal.before.sa_handler == SIG_IGN)
            continue;
        struct sigaction ours = {};
        ours.sa_handler = OnInterrupt;
        ours.sa_flags = SA_RESTART;
        ::sigaction(signal.number, &ours, nullptr);
    }
}

InterruptWatch::~InterruptWatch()
{
    if (--watches > 0)
        return;
    for (const WatchedSignal& signal : watched)
        ::sigaction(signal.number, &signal.before, nullptr);
}

bool InterruptWatch::Take()
{
    return pending.exchange(false);
}

} // namespace zetui::dialogs
