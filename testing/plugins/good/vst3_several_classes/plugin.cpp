#include "Vst3Plugin.h"

using namespace zettestplugin;

namespace {

constexpr Uid Id(std::uint32_t number)
{
    return {0x31C3E2AA, 0x5B0E4D6C, 0xA0D1F7E9, number};
}

Vst3Factory factory({"Wicker Works",
                     "https://wicker.example",
                     "",
                     {
                         {Id(1), audioModuleClass, "Wicker Reverb", nullptr, "Fx|Reverb", "", "3.1.0"},
                         {Id(2), componentControllerClass, "Wicker Controller", nullptr, "", "", "3.1.0"},
                         {Id(3), audioModuleClass, "Wicker Pad", nullptr, "Instrument|Synth", "", "3.1.1"},
                         {Id(4), audioModuleClass, "Wicker Echo", u"Wicker \u00C9cho \u2602 \U0001D11E",
                          "Fx|Delay", "", "3.1.2"},
                         {Id(5), audioModuleClass, "Wicker Drum", nullptr, "Instrument|Drum", "Wicker Guests",
                          "3.1.3"},
                     }});

} // namespace

/// Effects, instruments and a controller, which is a class but no plug-in. One name needs the wide strings.
ZET_VST3_FACTORY
{
    return factory.Reference();
}
