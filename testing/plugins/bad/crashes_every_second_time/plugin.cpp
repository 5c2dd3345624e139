#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// True the first time, the third, and so on. A file, which the environment names, keeps the count.
bool IsOddTime()
{
    const char* name = std::getenv("ZET_TEST_PLUGIN_STATE");
    if (!name)
        return false;
    std::error_code ignored;
    if (std::filesystem::remove(name, ignored))
        return false;
    std::ofstream stream(name);
    return true;
}

} // namespace

ZET_VST2_ENTRY
{
    if (IsOddTime())
        Crash();
    return MakeEffect(Ordinary("Crashes Every Second Time", "BaOd"), host);
}
