#include <cstdlib>
#include <fstream>

#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Crashes, after it has added a line to a file that the environment names.
ZET_VST2_ENTRY
{
    if (const char* name = std::getenv("ZET_TEST_PLUGIN_COUNT"))
        std::ofstream(name, std::ios::app) << "tried\n" << std::flush;
    Crash();
    return nullptr;
}
