// The dialog's run. It is a file of its own, because the scan without windows has all of the class but this.
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetcore/threads/MainThread.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/PluginManagerDialog.h"
#include "module/ManagerEnd.h"
#include "module/ModuleResources.h"
#include "preferences/Preferences.h"

namespace zetaudiopluginhostui {

bool AudioPluginManager::DoPluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                                               AudioPluginManagerSettings& settings, HWND parent)
{
    zetcore::threads::AssertMainThread();
    auto* const resources = RequireModuleResources("AudioPluginManager::DoPluginManagerDialog");
    auto& registry = *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    Preferences preferences(supplier, parent);
    if (!Preferences::RegistryFile().Exists()) {
        registry.ResetToDefaultFolders();
        preferences.SaveRegistry();
    }

    const auto copy = registry.MakeCopy();
    const auto dialog =
        zetui::utility::MakeIntrusive<PluginManagerDialog>(supplier, resources, settings, parent);
    if (settings.dialogBounds.width >= 1 && settings.dialogBounds.height >= 1)
        dialog->UI_SetGlobalStructureRect(settings.dialogBounds, false);
    try {
        dialog->RunModal();
    } catch (...) {
        // A host's exception ends the run as Cancel does, before it reaches the host.
        settings.dialogBounds = dialog->UI_GetGlobalStructureRect();
        TakeBackManagerRun(*copy, preferences);
        throw;
    }
    settings.dialogBounds = dialog->UI_GetGlobalStructureRect();

    const bool hasChanged = EndManagerRun(dialog->GetResult(), *copy, preferences);
    preferences.TellUser();
    return hasChanged;
}

} // namespace zetaudiopluginhostui
