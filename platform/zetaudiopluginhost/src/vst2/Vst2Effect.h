#pragma once

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "formats/ScanSteps.h"
#include "vst2/Vst2Abi.h"

namespace zetaudiopluginhost::vst2 {

/// One plug-in instance, made by a module's entry function. It is closed by `Close` only: after an exception
/// nothing of it is called any more. Every operation throws `PluginThrew` when the plug-in lets one out.
class Vst2Effect
{
  public:
    /// Throws `PluginUnusable` when the entry function gives nothing that is a plug-in.
    explicit Vst2Effect(EntryFunction entry);
    Vst2Effect(const Vst2Effect&) = delete;
    Vst2Effect& operator=(const Vst2Effect&) = delete;

    std::wstring Text(EffectOpcode opcode);
    std::intptr_t Category();
    /// Vendor's version, else the record's; 0 when there is none.
    std::int64_t Version();
    std::int32_t UniqueId() const { return effect->uniqueID; }
    bool IsSynth() const { return (effect->flags & EffectIsSynth) != 0; }

    struct SubPlugin
    {
        std::int32_t id = 0;
        std::wstring name;
    };
    /// A shell's sub-plug-ins. Throws `PluginUnusable` for a list without an end.
    std::vector<SubPlugin> SubPlugins();

    /// The first call that every host makes: many know their names only then.
    void Open();
    /// Switches it on and off, as a host does that is going to use it.
    void StartAndStop();
    void Close();

  private:
    std::intptr_t Ask(std::int32_t opcode, void* pointer = nullptr, std::intptr_t value = 0,
                      float option = 0);
    std::wstring AskText(std::int32_t opcode, std::intptr_t& answer);

    Effect* effect = nullptr;
};

} // namespace zetaudiopluginhost::vst2
