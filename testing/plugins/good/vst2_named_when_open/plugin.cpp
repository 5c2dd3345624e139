#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

class Late : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode == EffectOpen)
            isOpen = true;
        const bool isText = opcode == EffectGetEffectName || opcode == EffectGetVendorString ||
                            opcode == EffectGetProductString;
        if (isText && !isOpen)
            return Answer(pointer, "Not Yet Open", maxEffectName);
        return Vst2Plugin::Dispatch(opcode, value, pointer);
    }

  private:
    bool isOpen = false;
};

} // namespace

/// It knows its names only after it has been opened.
ZET_VST2_ENTRY
{
    return MakeEffect<Late>({"Harbour Glow", "Marrow Lane Audio", "Harbour", FourCharacters("HrGl"), 1410},
                            host);
}
