#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

class Touchy : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode == EffectOpen)
            Crash();
        return Vst2Plugin::Dispatch(opcode, value, pointer);
    }
};

} // namespace

ZET_VST2_ENTRY
{
    return MakeEffect<Touchy>(Ordinary("Crash On Open", "BaOp"), host);
}
