#include "Vst2Plugin.h"

using namespace zettestplugin;

ZET_VST2_ENTRY
{
    volatile bool goOn = true;
    while (goOn) {
    }
    return MakeEffect(Ordinary("Loops Forever", "BaLo"), host);
}
