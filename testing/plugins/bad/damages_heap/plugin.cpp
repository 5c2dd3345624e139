#include "OddSize.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, but writes into memory that it has freed. Glibc keeps its list of free blocks there, so that the
/// next plug-in that asks for blocks of this size crashes.
ZET_VST2_ENTRY
{
    UseBlocks([](volatile unsigned char* block) {
        for (int index = 0; index < 8; ++index)
            block[index] = 0x41;
    });
    return MakeEffect(Ordinary("Damages Heap", "BaHe"), host);
}
