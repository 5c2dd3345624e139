#include <cstdio>
#include <cstdlib>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

void Tell(const char* variable)
{
    const char* const value = std::getenv(variable);
    std::printf("%s=%s;\n", variable, value ? value : "(unset)");
}

} // namespace

/// Writes the name of the display that it finds, and works.
ZET_VST2_ENTRY
{
    Tell("DISPLAY");
    Tell("WAYLAND_DISPLAY");
    std::fflush(stdout);
    return MakeEffect(Ordinary("Tells Display", "BaTd"), host);
}
