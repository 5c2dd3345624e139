#include "vst2/Vst2Effect.h"

#include <array>
#include <set>

#include "formats/PluginText.h"
#include "vst2/Vst2Host.h"

namespace zetaudiopluginhost::vst2 {

namespace {

using Kind = PluginFailure::Kind;

/// Several times what the largest shells have: one that goes on never ends.
constexpr std::size_t maxSubPlugins = 10000;

} // namespace

Vst2Effect::Vst2Effect(EntryFunction entry) : effect(CallPlugin([entry] { return entry(&Vst2Host::Answer); }))
{
    if (effect == nullptr)
        throw PluginUnusable({.kind = Kind::EntryGaveNothing});
    if (effect->magic != effectMagic || effect->dispatcher == nullptr)
        throw PluginUnusable({.kind = Kind::EntryGaveNoPlugin});
}

std::intptr_t Vst2Effect::Ask(std::int32_t opcode, void* pointer, std::intptr_t value, float option)
{
    return CallPlugin([&] { return effect->dispatcher(effect, opcode, 0, value, pointer, option); });
}

std::wstring Vst2Effect::AskText(std::int32_t opcode, std::intptr_t& answer)
{
    // Zeros, and far more room than the format allows: neither terminators nor limits are kept to.
    std::array<char, generousStringBuffer + 1> buffer{};
    answer = Ask(opcode, buffer.data());
    buffer.back() = 0;
    return PluginText(std::string_view(buffer.data(), buffer.size()));
}

std::wstring Vst2Effect::Text(EffectOpcode opcode)
{
    std::intptr_t answer = 0;
    return AskText(opcode, answer);
}

std::intptr_t Vst2Effect::Category()
{
    return Ask(EffectGetPlugCategory);
}

std::int64_t Vst2Effect::Version()
{
    // The answer is 32 bits wide, whatever the plug-in leaves in the rest.
    const auto vendorVersion = static_cast<std::int32_t>(Ask(EffectGetVendorVersion));
    return vendorVersion > 0 ? vendorVersion : effect->version;
}

std::vector<Vst2Effect::SubPlugin> Vst2Effect::SubPlugins()
{
    std::vector<SubPlugin> found;
    std::set<std::int32_t> ids;
    for (;;) {
        std::intptr_t answer = 0;
        std::wstring name = AskText(EffectShellGetNextPlugin, answer);
        const auto id = static_cast<std::int32_t>(answer);
        if (id == 0)
            return found;
        if (!ids.insert(id).second || ids.size() > maxSubPlugins)
            throw PluginUnusable({.kind = Kind::EndlessShell});
        found.push_back({id, std::move(name)});
    }
}

void Vst2Effect::Open()
{
    Ask(EffectOpen);
}

void Vst2Effect::StartAndStop()
{
    Ask(EffectSetSampleRate, nullptr, 0, Vst2Host::sampleRate);
    Ask(EffectSetBlockSize, nullptr, Vst2Host::blockSize);
    Ask(EffectMainsChanged, nullptr, 1);
    Ask(EffectMainsChanged, nullptr, 0);
}

void Vst2Effect::Close()
{
    Ask(EffectClose);
    effect = nullptr;
}

} // namespace zetaudiopluginhost::vst2
