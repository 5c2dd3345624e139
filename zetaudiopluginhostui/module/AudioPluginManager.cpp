#include <zetaudiopluginhostui/AudioPluginManager.h>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/PluginManagerDialog.h"
#include "module/CrashRecovery.h"
#include "module/ManagerEnd.h"
#include "module/ModuleResources.h"
#include "preferences/Preferences.h"

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
    CrashRecovery(supplier, parent).Run();
}

bool AudioPluginManager::DoPluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                                               AudioPluginManagerSettings& settings, HWND parent)
{
    auto& registry = *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    Preferences preferences(supplier, parent);
    if (!Preferences::RegistryFile().Exists()) {
        registry.ResetToDefaultFolders();
        preferences.SaveRegistry();
    }

    const auto copy = registry.MakeCopy();
    const auto dialog =
        zetui::utility::MakeIntrusive<PluginManagerDialog>(supplier, GetModuleResources(), settings, parent);
    if (settings.dialogBounds.width >= 1 && settings.dialogBounds.height >= 1)
        dialog->UI_SetGlobalStructureRect(settings.dialogBounds, false);
    dialog->RunModal();
    settings.dialogBounds = dialog->UI_GetGlobalStructureRect();

    const bool hasChanged = EndManagerRun(dialog->GetResult(), *copy, preferences);
    preferences.TellUser();
    return hasChanged;
}

bool AudioPluginManager::IsQuickEffectScanFeatureEnabled()
{
    static const bool enabled =
        DebugDatabase::Instance().IsOn("zetaudiofilterhost.EnableQuickEffectScan", true);
    return enabled;
}

bool AudioPluginManager::IsVST2ShellSkippingFeatureEnabled()
{
    return DebugDatabase::Instance().IsOn("zetaudiofilterhost.EnableWavesVST2ShellSkipping", true);
}

} // namespace zetaudiopluginhostui
