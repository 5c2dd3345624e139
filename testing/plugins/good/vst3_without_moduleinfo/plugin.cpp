#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

Vst3Factory factory({"Copperbeech",
                     "https://copperbeech.example",
                     "",
                     {{Uid(0xC0BBE26B, 0x7D104A02, 0x8B8E5512, 0x00000001), audioModuleClass, "Tidal Comp",
                       nullptr, "Fx|Dynamics", "", "2.0.0.17"}}});

} // namespace

ZET_VST3_FACTORY
{
    return factory.Reference();
}
