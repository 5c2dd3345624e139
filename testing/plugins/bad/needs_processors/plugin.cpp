#include <cstdlib>

#include <sched.h>

#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Crashes when it may use fewer processors than the environment says.
ZET_VST2_ENTRY
{
    const char* needed = std::getenv("ZET_TEST_PLUGIN_PROCESSORS");
    cpu_set_t processors;
    if (needed && ::sched_getaffinity(0, sizeof processors, &processors) == 0 &&
        CPU_COUNT(&processors) < std::atoi(needed))
        Crash();
    return MakeEffect(Ordinary("Needs Processors", "BaNp"), host);
}
