#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

Vst3Factory factory({"Plain Oak",
                     "https://plainoak.example",
                     "",
                     {{Uid(0x0A4B1A10, 0x44D84E5B, 0x93A6C8D7, 0x00000001), audioModuleClass,
                       "Plain Oak Tone", nullptr, "", "", ""}},
                     1});

} // namespace

/// Offers the first factory interface only, which knows neither versions nor sub-categories.
ZET_VST3_FACTORY
{
    return factory.Reference();
}
