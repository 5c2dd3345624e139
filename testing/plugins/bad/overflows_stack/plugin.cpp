#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// The function uses its frame after the call, so that no compiler can turn the recursion into a loop.
int Descend(volatile int* deeper)
{
    volatile char frame[4096];
    frame[0] = static_cast<char>(*deeper);
    const int below = *deeper ? Descend(deeper) : 0;
    return below + frame[0];
}

} // namespace

ZET_VST2_ENTRY
{
    volatile int deeper = 1;
    return Descend(&deeper) == 0 ? nullptr : MakeEffect(Ordinary("Overflows Stack", "BaSt"), host);
}
