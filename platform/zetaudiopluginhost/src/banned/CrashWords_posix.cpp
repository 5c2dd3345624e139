#include "banned/CrashWords.h"

#include <csignal>

namespace zetaudiopluginhost {

std::string CrashWords(std::int64_t code, const zetcore::config::Localizer& language)
{
    switch (code) {
    case SIGSEGV:
        return language.Localize("$$$/AudioPluginManager/Crash/SegmentationFault=segmentation fault");
    case SIGABRT:
        return language.Localize("$$$/AudioPluginManager/Crash/Aborted=aborted");
    case SIGBUS:
        return language.Localize("$$$/AudioPluginManager/Crash/BusError=bus error");
    case SIGFPE:
        return language.Localize("$$$/AudioPluginManager/Crash/ArithmeticError=arithmetic error");
    case SIGILL:
        return language.Localize("$$$/AudioPluginManager/Crash/IllegalInstruction=illegal instruction");
    case SIGTRAP:
        return language.Localize("$$$/AudioPluginManager/Crash/Breakpoint=breakpoint");
    case SIGSYS:
        return language.Localize("$$$/AudioPluginManager/Crash/BadSystemCall=bad system call");
    case SIGKILL:
        return language.Localize("$$$/AudioPluginManager/Crash/Killed=killed");
    case SIGTERM:
        return language.Localize("$$$/AudioPluginManager/Crash/Terminated=terminated");
    case SIGPIPE:
        return language.Localize("$$$/AudioPluginManager/Crash/BrokenPipe=broken pipe");
    case SIGALRM:
        return language.Localize("$$$/AudioPluginManager/Crash/AlarmClock=alarm clock");
    case SIGXCPU:
        return language.Localize("$$$/AudioPluginManager/Crash/ProcessorTimeLimit=processor time limit");
    case SIGXFSZ:
        return language.Localize("$$$/AudioPluginManager/Crash/FileSizeLimit=file size limit");
    default:
        return language.Localize("$$$/AudioPluginManager/Crash/Signal=signal @0", {std::to_string(code)});
    }
}

} // namespace zetaudiopluginhost
