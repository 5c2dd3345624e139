#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// A file, which the environment names, remembers the first time. Without that variable it is never the first
/// time.
bool IsFirstTime()
{
    const char* name = std::getenv("ZET_TEST_PLUGIN_STATE");
    if (!name || std::filesystem::exists(name))
        return false;
    std::ofstream stream(name);
    return true;
}

} // namespace

/// The first time, it ends the process as the X11 library does when the display goes away. Later it finds no
/// display, and works without one unless the environment says that it needs one.
ZET_VST2_ENTRY
{
    if (IsFirstTime()) {
        std::fputs("X connection to :0 broken (explicit kill or server shutdown).\r\n", stderr);
        std::exit(1);
    }
    if (std::getenv("ZET_TEST_PLUGIN_NEEDS_DISPLAY"))
        Crash();
    return MakeEffect(Ordinary("Loses Display", "BaDi"), host);
}
