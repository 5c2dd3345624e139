#pragma once

#include "vst3/Vst3Abi.h"

namespace zetaudiopluginhost::vst3 {

/// The host that VST3 plug-ins see. One for the process, never gone: modules that stay loaded may keep it.
class Vst3Host final : public IHostApplication
{
  public:
    static Vst3Host& Instance();

    Result ZET_VST3_CALL QueryInterface(const char* wanted, void** object) override;
    std::uint32_t ZET_VST3_CALL AddRef() override { return 1; }
    std::uint32_t ZET_VST3_CALL Release() override { return 1; }
    Result ZET_VST3_CALL GetName(char16_t* name) override;
    Result ZET_VST3_CALL CreateInstance(const char* cid, const char* wanted, void** object) override;
};

} // namespace zetaudiopluginhost::vst3
