#include "Hang.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

class Clinging : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode == EffectClose)
            Hang();
        return Vst2Plugin::Dispatch(opcode, value, pointer);
    }
};

} // namespace

ZET_VST2_ENTRY
{
    return MakeEffect<Clinging>(Ordinary("Hangs On Close", "BaHc"), host);
}
