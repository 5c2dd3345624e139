#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

Vst3Factory factory({"Saltmarsh Instruments",
                     "https://saltmarsh.example",
                     "mail@saltmarsh.example",
                     {{Uid(0x5A17A25B, 0x0D2F4F11, 0x9E30C4A1, 0x00000002), audioModuleClass, "Ebb Organ",
                       nullptr, "Instrument|Synth", "", "0.9.1"}}});

} // namespace

/// Its moduleinfo.json lies where the first edition of that file put it: in Contents, beside Resources.
ZET_VST3_FACTORY
{
    return factory.Reference();
}
