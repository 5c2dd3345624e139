#include "Vst2Plugin.h"

using namespace zettestplugin;

/// A plain effect. Like most, it refuses a host that does not tell its version of the interface.
ZET_VST2_ENTRY
{
    if (host(nullptr, HostVersion, 0, 0, nullptr, 0.0f) < interfaceVersion)
        return nullptr;
    return MakeEffect({"Pebble Delay", "Marrow Lane Audio", "Pebble Delay Stereo", FourCharacters("PbDl"),
                       1203, CategoryEffect, EffectHasEditor},
                      host);
}
