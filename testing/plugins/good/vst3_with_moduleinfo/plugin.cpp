#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

Vst3Factory factory({"Saltmarsh Instruments",
                     "https://saltmarsh.example",
                     "mail@saltmarsh.example",
                     {{Uid(0x5A17A25B, 0x0D2F4F11, 0x9E30C4A1, 0x00000001), audioModuleClass, "Drift Filter",
                       nullptr, "Fx|Filter", "", "1.4.2"}}});

} // namespace

ZET_VST3_FACTORY
{
    return factory.Reference();
}
