#include <zetaudiopluginhostui/AudioPluginManager.h>

#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/threads/MainThread.h>

#include "module/CrashRecovery.h"
#include "module/ModuleResources.h"

namespace zetaudiopluginhostui {

using zetcore::debug::DebugDatabase;

AudioPluginManager::~AudioPluginManager() = default;

AudioPluginManager& AudioPluginManager::GetInstance()
{
    static AudioPluginManager instance;
    return instance;
}

void AudioPluginManager::CheckForCrashedPluginsAndNotifyUser(
    const zetui::pixmill::SupplierInterface* supplier, HWND parent)
{
    zetcore::threads::AssertMainThread();
    RequireModuleResources("AudioPluginManager::CheckForCrashedPluginsAndNotifyUser");
    CrashRecovery(supplier, parent).Run();
}

bool AudioPluginManager::IsQuickEffectScanFeatureEnabled()
{
    zetcore::threads::AssertMainThread();
    static const bool enabled =
        DebugDatabase::Instance().IsOn("zetaudiofilterhost.EnableQuickEffectScan", true);
    return enabled;
}

bool AudioPluginManager::IsVST2ShellSkippingFeatureEnabled()
{
    zetcore::threads::AssertMainThread();
    return DebugDatabase::Instance().IsOn("zetaudiofilterhost.EnableWavesVST2ShellSkipping", true);
}

} // namespace zetaudiopluginhostui
