#include "process/ProcessState.h"

#include <array>
#include <cfenv>
#include <clocale>
#include <csignal>
#include <cstring>
#include <exception>
#include <locale>
#include <string>

#include <locale.h>
#include <pthread.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zetaudiopluginhost {

namespace {

constexpr std::array watchedSignals = {SIGSEGV, SIGABRT, SIGFPE, SIGILL, SIGBUS,
                                       SIGPIPE, SIGCHLD, SIGHUP, SIGINT, SIGTERM};

std::string CurrentFolder()
{
    std::array<char, 4096> buffer{};
    return getcwd(buffer.data(), buffer.size()) != nullptr ? buffer.data() : std::string();
}

mode_t FileMask()
{
    // The mask can only be read by setting it. For that moment it is the strictest one.
    const mode_t mask = umask(077);
    umask(mask);
    return mask;
}

std::string CLocale()
{
    const char* name = std::setlocale(LC_ALL, nullptr);
    return name != nullptr ? name : std::string();
}

bool SameHandler(const struct sigaction& a, const struct sigaction& b)
{
    return a.sa_flags == b.sa_flags &&
           ((a.sa_flags & SA_SIGINFO) != 0 ? a.sa_sigaction == b.sa_sigaction : a.sa_handler == b.sa_handler);
}

} // namespace

struct ProcessState::Saved
{
    std::string folder = CurrentFolder();
    std::string cLocale = CLocale();
    locale_t threadLocale = uselocale(nullptr);
    std::locale cppLocale;
    std::terminate_handler terminate = std::get_terminate();
    std::fenv_t floatingPoint{};
    std::array<struct sigaction, watchedSignals.size()> handlers{};
    sigset_t blockedSignals{};
    mode_t fileMask = FileMask();
};

ProcessState::ProcessState() : saved(std::make_unique<Saved>())
{
    std::fegetenv(&saved->floatingPoint);
    for (std::size_t i = 0; i < watchedSignals.size(); ++i)
        sigaction(watchedSignals[i], nullptr, &saved->handlers[i]);
    pthread_sigmask(SIG_SETMASK, nullptr, &saved->blockedSignals);
}

ProcessState::~ProcessState() = default;

void ProcessState::Restore() const
{
    if (!saved->folder.empty() && CurrentFolder() != saved->folder) {
        // A folder that is gone meanwhile cannot be gone back to.
        [[maybe_unused]] const int ignored = chdir(saved->folder.c_str());
    }
    if (uselocale(nullptr) != saved->threadLocale)
        uselocale(saved->threadLocale);
    if (std::locale() != saved->cppLocale)
        std::locale::global(saved->cppLocale);
    if (CLocale() != saved->cLocale)
        std::setlocale(LC_ALL, saved->cLocale.c_str());
    if (std::get_terminate() != saved->terminate)
        std::set_terminate(saved->terminate);
    std::fesetenv(&saved->floatingPoint);
    for (std::size_t i = 0; i < watchedSignals.size(); ++i) {
        struct sigaction now = {};
        if (sigaction(watchedSignals[i], nullptr, &now) == 0 && !SameHandler(now, saved->handlers[i]))
            sigaction(watchedSignals[i], &saved->handlers[i], nullptr);
    }
    pthread_sigmask(SIG_SETMASK, &saved->blockedSignals, nullptr);
    umask(saved->fileMask);
}

} // namespace zetaudiopluginhost
