#pragma once

#include <array>
#include <cstdint>

#include "vst2/Vst2Abi.h"

namespace bench {

inline std::intptr_t AnswerBarely(zetaudiopluginhost::vst2::Effect*, std::int32_t opcode, std::int32_t,
                                  std::intptr_t, void*, float)
{
    using namespace zetaudiopluginhost::vst2;
    switch (opcode) {
    case HostVersion:
        return interfaceVersion;
    case HostGetSampleRate:
        return 44100;
    case HostGetBlockSize:
        return 512;
    default:
        return 0;
    }
}

/// Makes the effect, opens it, asks its name, maker and category, and closes it. False when there is no
/// effect.
inline bool AskPlugin(void* entry)
{
    using namespace zetaudiopluginhost::vst2;
    Effect* effect = reinterpret_cast<EntryFunction>(entry)(AnswerBarely);
    if (!effect || effect->magic != effectMagic)
        return false;
    std::array<char, generousStringBuffer> name{}, maker{};
    effect->dispatcher(effect, EffectOpen, 0, 0, nullptr, 0);
    effect->dispatcher(effect, EffectGetEffectName, 0, 0, name.data(), 0);
    effect->dispatcher(effect, EffectGetVendorString, 0, 0, maker.data(), 0);
    effect->dispatcher(effect, EffectGetPlugCategory, 0, 0, nullptr, 0);
    effect->dispatcher(effect, EffectClose, 0, 0, nullptr, 0);
    return name[0] != 0;
}

} // namespace bench
