#pragma once

#include <zetaudiopluginhostui/Export.h>

namespace zetaudiopluginhostui {

/// The module's face to its host. Main thread.
class ZETAUDIOPLUGINHOSTUI_API AudioPluginManager
{
  public:
    AudioPluginManager() = default;
    AudioPluginManager(const AudioPluginManager&) = default;
    AudioPluginManager& operator=(const AudioPluginManager&) = default;
    virtual ~AudioPluginManager();

    static AudioPluginManager& GetInstance();

    /// On when the debug-database entry "zetaudiofilterhost.EnableQuickEffectScan" (default "true") is
    /// exactly "true". Read once a process, on first use.
    static bool IsQuickEffectScanFeatureEnabled();
    /// The same for "zetaudiofilterhost.EnableWavesVST2ShellSkipping", read afresh on every call.
    static bool IsVST2ShellSkippingFeatureEnabled();
};

} // namespace zetaudiopluginhostui
