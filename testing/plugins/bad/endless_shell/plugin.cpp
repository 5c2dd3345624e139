#include <string>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

class Endless : public Vst2Plugin
{
  public:
    using Vst2Plugin::Vst2Plugin;

  protected:
    std::intptr_t Dispatch(std::int32_t opcode, std::intptr_t value, void* pointer) override
    {
        if (opcode != EffectShellGetNextPlugin)
            return Vst2Plugin::Dispatch(opcode, value, pointer);
        given = given % 0x7FFFFFFF + 1;
        Answer(pointer, ("Endless " + std::to_string(given)).c_str(), maxEffectName);
        return given;
    }

  private:
    std::int32_t given = 0;
};

} // namespace

/// A shell that always has one more plug-in, each with a name and an id of its own.
ZET_VST2_ENTRY
{
    Vst2Description shell = Ordinary("Endless Shell", "BaSh");
    shell.category = CategoryShell;
    return MakeEffect<Endless>(shell, host);
}
