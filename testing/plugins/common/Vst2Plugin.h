#pragma once

#include <cstring>
#include <utility>

#include <vst2/Vst2Abi.h>

#include "Export.h"

/// The code that all VST2 samples share. So a sample's own file shows its behaviour and nothing else.
namespace zettestplugin {

using namespace zetaudiopluginhost::vst2;

/// Four characters as an id, the first one in the highest byte.
constexpr std::int32_t FourCharacters(const char (&text)[5])
{
    std::uint32_t id = 0;
    for (int i = 0; i < 4; ++i)
        id = id << 8 | static_cast<unsigned char>(text[i]);
    return static_cast<std::int32_t>(id);
}

struct Vst2Description
{
    const char* name;
    const char* vendor;
    const char* product;
    std::int32_t uniqueID;
    std::int32_t version;
    PlugCategory category = CategoryEffect;
    std::int32_t flags = 0;
};

/// An instance that answers a host's usual questions and is silent. It deletes itself when it is closed.
class Vst2Plugin
{
  public:
    Vst2Plugin(const Vst2Description& descriptionToShow, HostCallback callback)
        : description(descriptionToShow), host(callback)
    {
        effect.magic = effectMagic;
        effect.dispatcher = &CallDispatch;
        effect.process = &ProcessNothing;
        effect.setParameter = [](Effect*, std::int32_t, float) {};
        effect.getParameter = [](Effect*, std::int32_t) { return 0.0f; };
        effect.numPrograms = 1;
        effect.numInputs = (description.flags & EffectIsSynth) ? 0 : 2;
        effect.numOutputs = 2;
        effect.flags = description.flags | EffectCanReplacing;
        effect.object = this;
        effect.uniqueID = description.uniqueID;
        effect.version = description.version;
        effect.processReplacing = &ProcessNothing;
    }
    virtual ~Vst2Plugin() = default;
    Vst2Plugin(const Vst2Plugin&) = delete;
    Vst2Plugin& operator=(const Vst2Plugin&) = delete;

    Effect* Interface() noexcept { return &effect; }

  protected:
    virtual std::intptr_t Dispatch(std::int32_t opcode, [[maybe_unused]] std::intptr_t value, void* pointer)
    {
        switch (opcode) {
        case EffectGetPlugCategory:
            return description.category;
        case EffectGetEffectName:
            return Answer(pointer, description.name, maxEffectName);
        case EffectGetVendorString:
            return Answer(pointer, description.vendor, maxVendorString);
        case EffectGetProductString:
            return Answer(pointer, description.product, maxProductString);
        case EffectGetVendorVersion:
            return description.version;
        case EffectGetVstVersion:
            return interfaceVersion;
        default:
            return 0;
        }
    }

    std::intptr_t AskHost(std::int32_t opcode, void* pointer = nullptr)
    {
        return host(&effect, opcode, 0, 0, pointer, 0.0f);
    }

    static std::intptr_t Answer(void* buffer, const char* text, std::size_t size)
    {
        auto* answer = static_cast<char*>(buffer);
        std::strncpy(answer, text, size - 1);
        answer[size - 1] = '\0';
        return 1;
    }

    Vst2Description description;
    HostCallback host;
    Effect effect{};

  private:
    static std::intptr_t CallDispatch(Effect* effect, std::int32_t opcode, std::int32_t, std::intptr_t value,
                                      void* pointer, float)
    {
        auto* self = static_cast<Vst2Plugin*>(effect->object);
        const std::intptr_t answer = self->Dispatch(opcode, value, pointer);
        if (opcode == EffectClose)
            delete self;
        return answer;
    }

    static void ProcessNothing(Effect* effect, float**, float** outputs, std::int32_t frames)
    {
        for (std::int32_t channel = 0; channel < effect->numOutputs; ++channel)
            std::memset(outputs[channel], 0, static_cast<std::size_t>(frames) * sizeof(float));
    }
};

/// Makes an instance that lives until it is closed.
template<class Plugin = Vst2Plugin, class... Arguments>
Effect* MakeEffect(const Vst2Description& description, HostCallback host, Arguments&&... arguments)
{
    return (new Plugin(description, host, std::forward<Arguments>(arguments)...))->Interface();
}

/// For the samples of which only the behaviour matters.
constexpr Vst2Description Ordinary(const char* name, const char (&id)[5])
{
    return {name, "Bramble Test Works", name, FourCharacters(id), 1000};
}

} // namespace zettestplugin

/// Declares the entry function. Its body must follow, and may use `host`.
#define ZET_VST2_ENTRY                                                                                       \
    ZET_PLUGIN_EXPORT zettestplugin::Effect* VSTPluginMain([[maybe_unused]] zettestplugin::HostCallback host)
