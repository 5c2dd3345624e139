#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

Vst3Factory factory({"Copperbeech",
                     "https://copperbeech.example",
                     "",
                     {{Uid(0xC0BBE26B, 0x7D104A02, 0x8B8E5512, 0x00000002), audioModuleClass, "Thimble Gain",
                       nullptr, "Fx|Tools", "", "1.0.3"}}});

} // namespace

/// A module that is the .vst3 file itself, with no bundle around it.
ZET_VST3_FACTORY
{
    return factory.Reference();
}
