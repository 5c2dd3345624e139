#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

class Lazy : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode == EffectMainsChanged && value == 1)
            Crash();
        return Vst2Plugin::Dispatch(opcode, value, pointer);
    }
};

} // namespace

/// It can be opened, asked and closed. It crashes when it is used.
ZET_VST2_ENTRY
{
    return MakeEffect<Lazy>(Ordinary("Crash On Start", "BaSt"), host);
}
