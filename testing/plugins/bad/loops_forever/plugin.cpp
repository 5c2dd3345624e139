#include <cstdio>

#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Says so, for those who wait until it hangs.
ZET_VST2_ENTRY
{
    std::fputs("loops from now on\n", stderr);
    std::fflush(stderr);
    volatile bool goOn = true;
    while (goOn) {
    }
    return MakeEffect(Ordinary("Loops Forever", "BaLo"), host);
}
