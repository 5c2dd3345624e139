#include "Hang.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

class Shy : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode == EffectGetEffectName || opcode == EffectGetProductString)
            Hang();
        return Vst2Plugin::Dispatch(opcode, value, pointer);
    }
};

} // namespace

ZET_VST2_ENTRY
{
    return MakeEffect<Shy>(Ordinary("Hangs When Asked Name", "BaHn"), host);
}
