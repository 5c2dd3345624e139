#include "BadPluginReasons.h"

#include <zettesting/Emulation.h>

namespace zetaudiofilterscan {

std::vector<BadPluginReason> BadPluginReasons()
{
    std::vector<BadPluginReason> reasons = {
        {"bad/crash_in_entry", "crashed (access violation) in its entry function"},
        {"bad/crash_on_open", "crashed (access violation) while being opened"},
        {"bad/crash_when_asked_name", "crashed (access violation) while being asked what it is"},
        {"bad/crash_on_close", "crashed (access violation) while being closed"},
        {"bad/crash_vst3_factory", "crashed (access violation) in its entry function"},
        {"bad/aborts", "crashed (aborted) in its entry function"},
        {"bad/overflows_stack", "crashed (stack overflow) in its entry function"},
        {"bad/exits_zero", "ended the process (exit code 0) in its entry function"},
        {"bad/quick_exits_one", "ended the process (exit code 1) in its entry function"},
        {"bad/installs_crash_handler", "ended the process (exit code 0) in its entry function"},
        {"bad/throws_exception", "threw an exception (the plug-in gave up)"},
        {"bad/missing_library", "could not be loaded: libzet_not_found.dll: "},
        {"bad/returns_null", "its entry function returned nothing"},
        {"bad/wrong_magic", "its entry function returned something that is no VST plug-in"},
        {"bad/endless_shell", "it is a shell that never ends its list of plug-ins"},
        {"bad/empty_shell", "it is a shell without plug-ins"},
        {"bad/vst3_null_factory", "its entry function returned nothing"},
        {"bad/vst3_without_classes", "it has no audio module class"},
        {"bad/clap_crash_in_init", "crashed (access violation) in its entry function"},
        {"bad/clap_crash_in_factory", "crashed (access violation) in its entry function"},
        {"bad/clap_crash_in_descriptor", "crashed (access violation) while being asked what it is"},
        {"bad/clap_throws_exception", "threw an exception (the plug-in lost count)"},
        {"bad/clap_no_factory", "it has no plug-in factory"},
        {"bad/clap_refuses_init", "its entry function refused"},
        {"bad/clap_unknown_version", "it was built for version 0.26.3 of CLAP"},
        {"bad/closes_descriptors", "closed files of the process that had loaded it"},
        {"bad/writes_into_channel",
         "damaged the process that had loaded it (a question that has been answered)"},
        {"bad/loops_forever", "took longer than 3 seconds in its entry function", 3},
        {"bad/deadlocks_on_unload", "took longer than 3 seconds while being unloaded", 3},
    };
    // Wine's loader catches what a module does wrong in its initialisers and in its last functions.
    if (zettesting::IsWine()) {
        reasons.push_back({"bad/crash_on_load", "could not be loaded: "});
    } else {
        reasons.push_back({"bad/crash_on_load", "crashed (access violation) while being loaded"});
        reasons.push_back({"bad/crash_on_unload", "crashed (access violation) while being unloaded"});
    }
    return reasons;
}

std::vector<const char*> PluginsThatTheLoaderStops()
{
    if (zettesting::IsWine())
        return {"bad/crash_on_unload"};
    return {};
}

const char* QuotedFileName()
{
    return "bad ' name";
}

} // namespace zetaudiofilterscan
