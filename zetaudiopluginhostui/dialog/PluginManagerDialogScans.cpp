// The manager dialog scans everything, or a banned plug-in again.
#include <algorithm>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/FileException.h>

#include "dialog/PluginManagerDialog.h"
#include "module/PreferenceAccessError.h"

namespace zetaudiopluginhostui {

namespace filesupport = zetcore::filesupport;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

void PluginManagerDialog::OnScanForPlugins(ButtonChanged* /*message*/)
{
    const auto scan = std::make_shared<AudioPluginScan>(GetSupplier());
    scan->ScanForPlugins(GetNativeWindow(), rescanExistingCheckbox->IsChecked(),
                         !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
                         AudioPluginManager::IsQuickEffectScanFeatureEnabled(),
                         separateProcessCheckbox->IsChecked());
    PopulatePluginList(true, true);
}

void PluginManagerDialog::OnReloadPlugin(ButtonChanged* message)
{
    const auto* const button = dynamic_cast<Button*>(message->GetControl());
    if (!button)
        zetcore::config::ThrowInvalidTypeConversion();
    const auto found = std::find_if(reloadButtonOfRow.begin(), reloadButtonOfRow.end(),
                                    [button](const auto& each) { return each.second.get() == button; });
    const PluginListEntry* const entry = found == reloadButtonOfRow.end() ? nullptr : FindEntry(found->first);
    if (!entry)
        return;
    // The entry goes when the list is filled again.
    const PluginLocator locator = entry->locator;
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();

    BannedPluginManager::GetInstance()->RemoveBannedPlugin(locator);
    bool preferencesAccessible = SaveBannedList();
    std::vector<PluginLocator> vanished;
    registry.CollectPotentialPlugins(true, vanished);
    // A plug-in that lies in no registered folder any more counts as vanished, too, but can be scanned.
    if (std::find(vanished.begin(), vanished.end(), locator) != vanished.end() &&
        registry.IsFileGone(locator)) {
        registry.RemovePluginLocators({locator});
        preferencesAccessible = SaveRegistry() && preferencesAccessible;
    } else {
        preferencesAccessible = RescanPlugin(locator) && preferencesAccessible;
    }
    PopulatePluginList(true, true);
    if (!preferencesAccessible)
        ShowPreferenceAccessCaution(GetSupplier(), GetNativeWindow());
}

bool PluginManagerDialog::SaveBannedList() const
{
    try {
        BannedPluginManager::GetInstance()->SaveConfiguration(
            {filesupport::Dir::PrefDir(), BannedPluginManager::GetSettingsFileName()});
        return true;
    } catch (const filesupport::file_exception&) {
        return false;
    }
}

bool PluginManagerDialog::SaveRegistry() const
{
    try {
        PluginModuleInfoManager::GetInstance()->SaveConfiguration(
            {filesupport::Dir::PrefDir(), PluginModuleInfoManager::GetSettingsFileName()}, true);
        return true;
    } catch (const filesupport::file_exception&) {
        return false;
    }
}

bool PluginManagerDialog::RescanPlugin(const PluginLocator& locator) const
{
    const auto scan = std::make_shared<AudioPluginScan>(GetSupplier());
    return scan->ScanForPluginsWithoutAlerts(
        GetNativeWindow(), {locator}, !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
        AudioPluginManager::IsQuickEffectScanFeatureEnabled(), separateProcessCheckbox->IsChecked());
}

} // namespace zetaudiopluginhostui
