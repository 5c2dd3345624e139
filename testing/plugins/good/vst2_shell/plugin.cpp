#include <iterator>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

constexpr const char* vendor = "Fennel and Flint";
constexpr Vst2Description container{"Quarry Shell",         vendor, "Quarry",
                                    FourCharacters("Qrry"), 3100,   CategoryShell};
constexpr Vst2Description inside[] = {
    {"Quarry Gate", vendor, "Quarry Gate", FourCharacters("QrGt"), 3101},
    {"Quarry Tilt", vendor, "Quarry Tilt", FourCharacters("QrTl"), 3102, CategoryMastering},
    {"Quarry Mono", vendor, "Quarry Mono", FourCharacters("QrMn"), 3103, CategorySynth, EffectIsSynth},
};

class Shell : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode != EffectShellGetNextPlugin)
            return Vst2Plugin::Dispatch(opcode, value, pointer);
        if (next == std::size(inside))
            return 0;
        const Vst2Description& one = inside[next++];
        Answer(pointer, one.name, maxEffectName);
        return one.uniqueID;
    }

  private:
    std::size_t next = 0;
};

} // namespace

/// Three plug-ins in one module. The host chooses one through its answer to the current id.
ZET_VST2_ENTRY
{
    const std::intptr_t wanted = host(nullptr, HostCurrentId, 0, 0, nullptr, 0.0f);
    if (wanted == 0)
        return MakeEffect<Shell>(container, host);
    for (const Vst2Description& one : inside)
        if (one.uniqueID == wanted)
            return MakeEffect(one, host);
    return nullptr;
}
