#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

ZET_VST2_ENTRY
{
    Crash();
    return MakeEffect(Ordinary("Crash In Entry", "BaEn"), host);
}
