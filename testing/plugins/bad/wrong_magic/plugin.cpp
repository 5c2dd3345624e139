#include "Vst2Plugin.h"

using namespace zettestplugin;

/// It returns a record that is no effect. Whoever follows a pointer in it crashes.
ZET_VST2_ENTRY
{
    static Effect noEffect = {};
    noEffect.magic = 0x21506B50;
    return &noEffect;
}
