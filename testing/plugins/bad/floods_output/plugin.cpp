#include <cstdio>
#include <string>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

void Flood(std::FILE* stream)
{
    const std::string line = std::string(126, '~') + "\n\r";
    for (int i = 0; i < 32 * 1024; ++i)
        std::fwrite(line.data(), 1, line.size(), stream);
    std::fflush(stream);
}

} // namespace

/// Writes four mebibytes to each standard stream, and then works.
ZET_VST2_ENTRY
{
    Flood(stdout);
    Flood(stderr);
    return MakeEffect(Ordinary("Floods Output", "BaFl"), host);
}
