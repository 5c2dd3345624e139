// Builds with sanitizers call these functions. A plug-in's crash must stay the signal that it is, because the
// supervisor tells people how the worker ended.

#if defined(__GNUC__) && !defined(_WIN32)
#define ZET_VISIBLE __attribute__((visibility("default"), used))
#else
#define ZET_VISIBLE
#endif

extern "C" {

// Some plug-ins are never unloaded. Memory that they leave behind is not ours to report.
ZET_VISIBLE const char* __asan_default_options()
{
    return "handle_segv=0:handle_abort=0:handle_sigbus=0:handle_sigfpe=0:handle_sigill=0:handle_sigtrap=0:"
           "allow_user_segv_handler=1:use_sigaltstack=0:detect_leaks=0";
}

ZET_VISIBLE const char* __tsan_default_options()
{
    return "handle_segv=0:handle_abort=0:handle_sigbus=0:handle_sigfpe=0:handle_sigill=0:handle_sigtrap=0:"
           "allow_user_segv_handler=1:use_sigaltstack=0";
}

ZET_VISIBLE const char* __ubsan_default_options()
{
    return "handle_segv=0:handle_abort=0:handle_sigbus=0:handle_sigfpe=0:handle_sigill=0:handle_sigtrap=0:"
           "allow_user_segv_handler=1:use_sigaltstack=0";
}
}
