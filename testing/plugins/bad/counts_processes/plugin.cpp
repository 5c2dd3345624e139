#include <cstdlib>
#include <fstream>
#include <string>

#include "LoadCount.h"
#include "Vst2Plugin.h"
#include "Wait.h"

using namespace zettestplugin;

namespace {

struct CountWhileLoaded
{
    CountWhileLoaded()
    {
        const int count = CountProcesses();
        // A line for each time that it is loaded.
        if (const char* name = std::getenv("ZET_TEST_PLUGIN_COUNT"))
            std::ofstream(std::string(name) + ".txt", std::ios::app) << std::to_string(count) + "\n";
    }
    ~CountWhileLoaded() { EndCounting(); }
} countWhileLoaded;

} // namespace

/// Works, and writes down how many processes have one of its kind loaded at the time.
ZET_VST2_ENTRY
{
    Wait();
    return MakeEffect(Ordinary("Counts Processes", "BaCp"), host);
}
