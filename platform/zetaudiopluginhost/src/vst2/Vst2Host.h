#pragma once

#include <cstdint>
#include <string>

#include "vst2/Vst2Abi.h"

namespace zetaudiopluginhost::vst2 {

/// The host that VST2 plug-ins see. The format calls it through a plain function without any context, so what
/// it answers is process-wide; plug-ins call it from any thread.
class Vst2Host
{
  public:
    /// The setup that plug-ins are told, and that they are told again when they ask.
    static constexpr std::int32_t sampleRate = 44100, blockSize = 512;

    /// Says whose turn it is: the folder that plug-ins are told as theirs.
    explicit Vst2Host(const std::wstring& modulePath);
    ~Vst2Host();
    Vst2Host(const Vst2Host&) = delete;
    Vst2Host& operator=(const Vst2Host&) = delete;

    /// The sub-plug-in that the next entry call is to make; 0 for the module itself.
    static void SetCurrentId(std::int32_t id) noexcept;

    /// The function that the plug-ins call.
    static std::intptr_t Answer(Effect* effect, std::int32_t opcode, std::int32_t index, std::intptr_t value,
                                void* pointer, float option) noexcept;
};

} // namespace zetaudiopluginhost::vst2
