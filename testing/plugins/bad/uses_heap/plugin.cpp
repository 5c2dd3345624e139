#include "OddSize.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// A good plug-in that uses the part of the heap that damages_heap damages.
ZET_VST2_ENTRY
{
    UseBlocks([](volatile unsigned char*) {});
    return MakeEffect(Ordinary("Uses Heap", "BaUh"), host);
}
