#include <zetaudiopluginhostui/AudioPluginManager.h>

#include "module/CrashRecovery.h"
#include "module/DebugSwitch.h"

namespace zetaudiopluginhostui {

AudioPluginManager::~AudioPluginManager() = default;

AudioPluginManager& AudioPluginManager::GetInstance()
{
    static AudioPluginManager instance;
    return instance;
}

void AudioPluginManager::CheckForCrashedPluginsAndNotifyUser(
    const zetui::pixmill::SupplierInterface* supplier, HWND parent)
{
    CrashRecovery(supplier, parent).Run();
}

bool AudioPluginManager::IsQuickEffectScanFeatureEnabled()
{
    static const bool enabled = IsDebugSwitchOn("zetaudiofilterhost.EnableQuickEffectScan", "true");
    return enabled;
}

bool AudioPluginManager::IsVST2ShellSkippingFeatureEnabled()
{
    return IsDebugSwitchOn("zetaudiofilterhost.EnableWavesVST2ShellSkipping", "true");
}

} // namespace zetaudiopluginhostui
