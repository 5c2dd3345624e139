#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// When it is opened, it asks its host the usual questions, and relies on sane answers.
class Lantern : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode == EffectOpen)
            AskAround();
        if (opcode == EffectGetEffectName && !hostIsSane)
            return Answer(pointer, "Lantern in a strange host", maxEffectName);
        return Vst2Plugin::Dispatch(opcode, value, pointer);
    }

  private:
    void AskAround()
    {
        char vendor[maxVendorString] = {};
        char product[maxProductString] = {};
        char question[] = "sendVstMidiEvent";
        AskHost(HostGetVendorString, vendor);
        AskHost(HostGetProductString, product);
        AskHost(HostGetVendorVersion);
        AskHost(HostCanDo, question);
        AskHost(HostWantMidi);
        AskHost(HostIOChanged);
        AskHost(HostUpdateDisplay);
        AskHost(HostGetCurrentProcessLevel);
        AskHost(HostGetDirectory);
        AskHost(HostIdle);
        if (const auto* time = reinterpret_cast<const TimeInfo*>(AskHost(HostGetTime)))
            hostIsSane = time->sampleRate > 0;
        hostIsSane = hostIsSane && product[0] != '\0' && AskHost(HostGetSampleRate) > 0 &&
                     AskHost(HostGetBlockSize) > 0 && AskHost(HostGetLanguage) >= 0;
    }

    bool hostIsSane = true;
};

} // namespace

/// An instrument. Its id has the highest bit set: it is a large number, not a negative one.
ZET_VST2_ENTRY
{
    return MakeEffect<Lantern>({"Lantern Keys", "Marrow Lane Audio", "Lantern Keys",
                                static_cast<std::int32_t>(0xB84C6E6Bu), 2100, CategorySynth,
                                EffectIsSynth | EffectHasEditor},
                               host);
}
