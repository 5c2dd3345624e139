#include "supervisor/workers/ProcessEnd.h"

#include <csignal>

namespace zetaudiofilterscan {

std::string CrashText(long long code)
{
    switch (code) {
    case SIGSEGV:
        return "segmentation fault";
    case SIGABRT:
        return "aborted";
    case SIGBUS:
        return "bus error";
    case SIGFPE:
        return "arithmetic error";
    case SIGILL:
        return "illegal instruction";
    case SIGTRAP:
        return "breakpoint";
    case SIGSYS:
        return "bad system call";
    case SIGKILL:
        return "killed";
    case SIGTERM:
        return "terminated";
    case SIGPIPE:
        return "broken pipe";
    case SIGALRM:
        return "alarm clock";
    case SIGXCPU:
        return "processor time limit";
    case SIGXFSZ:
        return "file size limit";
    default:
        return "signal " + std::to_string(code);
    }
}

} // namespace zetaudiofilterscan
