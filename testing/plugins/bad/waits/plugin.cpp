#include "Vst2Plugin.h"
#include "Wait.h"

using namespace zettestplugin;

/// Takes time, and no processor.
ZET_VST2_ENTRY
{
    Wait();
    return MakeEffect(Ordinary("Waits", "BaWt"), host);
}
