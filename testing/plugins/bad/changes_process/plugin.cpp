#include <clocale>
#include <csignal>
#include <cstdlib>
#include <filesystem>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// After this, a crash anywhere in the process looks like success.
void Swallow(int)
{
    std::_Exit(0);
}

void ChangeProcess()
{
    for (const char* locale : {"de_DE.UTF-8", "fr_FR.UTF-8", "German_Germany.1252", "C.UTF-8"})
        if (std::setlocale(LC_ALL, locale))
            break;
    for (const int signal : {SIGINT, SIGTERM})
        std::signal(signal, SIG_IGN);
    for (const int signal : {SIGSEGV, SIGABRT, SIGFPE, SIGILL})
        std::signal(signal, &Swallow);
    std::error_code ignored;
    std::filesystem::current_path(std::filesystem::current_path(ignored).root_path(), ignored);
}

} // namespace

/// Changes the process's locale, signal handlers and current folder, and then works.
ZET_VST2_ENTRY
{
    ChangeProcess();
    return MakeEffect(Ordinary("Changes Process", "BaPr"), host);
}
