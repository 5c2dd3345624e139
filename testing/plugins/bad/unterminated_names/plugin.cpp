#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// Fills each buffer to its documented size and leaves no room for the terminator.
class Verbose : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        switch (opcode) {
        case EffectGetEffectName:
            return FillUp(pointer, 'N', maxEffectName);
        case EffectGetVendorString:
            return FillUp(pointer, 'V', maxVendorString);
        case EffectGetProductString:
            return FillUp(pointer, 'P', maxProductString);
        default:
            return Vst2Plugin::Dispatch(opcode, value, pointer);
        }
    }

  private:
    static std::intptr_t FillUp(void* buffer, char letter, std::size_t size)
    {
        std::memset(buffer, letter, size);
        return 1;
    }
};

} // namespace

ZET_VST2_ENTRY
{
    return MakeEffect<Verbose>(Ordinary("", "BaUt"), host);
}
