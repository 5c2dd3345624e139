#include <cstdio>

#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Writes a line first, for tests that wait until it hangs.
ZET_VST2_ENTRY
{
    std::fputs("loops from now on\n", stderr);
    std::fflush(stderr);
    volatile bool goOn = true;
    while (goOn) {
    }
    return MakeEffect(Ordinary("Loops Forever", "BaLo"), host);
}
