#include <zetaudiopluginhostui/AudioPluginManager.h>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/PluginManagerDialog.h"
#include "module/CrashRecovery.h"
#include "module/DebugSwitch.h"
#include "module/ManagerEnd.h"
#include "module/ModuleResources.h"
#include "module/PreferenceAccessError.h"
#include "module/PreferenceFiles.h"

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

bool AudioPluginManager::DoPluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                                               AudioPluginManagerSettings& settings, HWND parent)
{
    auto& registry = *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    bool isAccessible = true;
    if (const auto file = ConfigurationFile(); !file.Exists()) {
        registry.ResetToDefaultFolders();
        isAccessible = IsAccessibleFor([&] { registry.SaveConfiguration(file, true); });
    }

    const auto copy = registry.MakeCopy();
    const auto dialog =
        zetui::utility::MakeIntrusive<PluginManagerDialog>(supplier, GetModuleResources(), settings, parent);
    if (settings.dialogBounds.width >= 1 && settings.dialogBounds.height >= 1)
        dialog->UI_SetGlobalStructureRect(settings.dialogBounds, false);
    dialog->RunModal();
    settings.dialogBounds = dialog->UI_GetGlobalStructureRect();

    const ManagerEnd end = EndManagerRun(dialog->GetResult(), *copy);
    if (!isAccessible || !end.isAccessible)
        ShowPreferenceAccessCaution(supplier, parent);
    return end.hasChanged;
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
