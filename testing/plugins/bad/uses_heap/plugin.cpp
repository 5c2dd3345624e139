#include "OddSize.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Good by itself. It uses what damages_heap may have damaged.
ZET_VST2_ENTRY
{
    UseBlocks([](volatile unsigned char*) {});
    return MakeEffect(Ordinary("Uses Heap", "BaUh"), host);
}
