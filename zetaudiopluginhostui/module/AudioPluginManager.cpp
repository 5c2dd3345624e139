#include <zetaudiopluginhostui/AudioPluginManager.h>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/filesupport/Dir.h>
#include <zetcore/filesupport/File.h>
#include <zetcore/filesupport/FileException.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/PluginManagerDialog.h"
#include "module/CrashRecovery.h"
#include "module/DebugSwitch.h"
#include "module/FileDigest.h"
#include "module/ModuleResources.h"
#include "module/PreferenceAccessError.h"

namespace zetaudiopluginhostui {

namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::filesupport::File;

File ConfigurationFile()
{
    return {zetcore::filesupport::Dir::PrefDir(), PluginModuleInfoManager::GetSettingsFileName()};
}

/// False when the preferences folder does not let it.
template<typename Work>
bool IsAccessibleFor(Work work)
{
    try {
        work();
        return true;
    } catch (const zetcore::filesupport::file_exception&) {
        return false;
    }
}

} // namespace

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
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    bool isAccessible = true;
    if (const File file = ConfigurationFile(); !file.Exists()) {
        registry.ResetToDefaultFolders();
        isAccessible = IsAccessibleFor([&] { registry.SaveConfiguration(file, true); });
    }

    const auto dialog =
        zetui::utility::MakeIntrusive<PluginManagerDialog>(supplier, GetModuleResources(), settings, parent);
    if (settings.dialogBounds.width >= 1 && settings.dialogBounds.height >= 1)
        dialog->UI_SetGlobalStructureRect(settings.dialogBounds, false);
    dialog->RunModal();
    settings.dialogBounds = dialog->UI_GetGlobalStructureRect();

    bool hasChanged = false;
    const File file = ConfigurationFile();
    if (dialog->GetResult() == zetui::dialogs::UI_DialogViewContainer::kOK) {
        const bool isSaved = IsAccessibleFor([&] {
            const std::uint64_t before = FileDigest(file);
            registry.SaveConfiguration(file, true);
            hasChanged = FileDigest(file) != before;
        });
        isAccessible = isSaved && isAccessible;
        registry.GetPluginInfosChangedSignal()();
    } else {
        isAccessible = IsAccessibleFor([&] { registry.LoadConfiguration(file); }) && isAccessible;
    }
    if (!isAccessible)
        ShowPreferenceAccessCaution(supplier, parent);
    return hasChanged;
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
