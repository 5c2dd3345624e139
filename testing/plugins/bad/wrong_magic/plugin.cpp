#include "Vst2Plugin.h"

using namespace zettestplugin;

/// What it gives is something, but no effect; whoever follows a pointer in it crashes.
ZET_VST2_ENTRY
{
    static Effect noEffect = {};
    noEffect.magic = 0x21506B50;
    return &noEffect;
}
