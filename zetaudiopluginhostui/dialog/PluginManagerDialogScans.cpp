// The manager dialog scans everything, or a banned plug-in again.
#include <algorithm>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>

#include "dialog/PluginManagerDialog.h"
#include "preferences/Preferences.h"

namespace zetaudiopluginhostui {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

namespace {

/// While one of these lives, an empty list says that a scan runs.
class ScanIsSaid
{
  public:
    explicit ScanIsSaid(PluginListView* shownList) : list(shownList) { Say(true); }
    ~ScanIsSaid() { Say(false); }
    ScanIsSaid(const ScanIsSaid&) = delete;
    ScanIsSaid& operator=(const ScanIsSaid&) = delete;

  private:
    void Say(bool scans)
    {
        if (list)
            list->SayWhyItIsEmpty(scans);
    }
    PluginListView* list;
};

} // namespace

void PluginManagerDialog::OnScanForPlugins(ButtonChanged* /*message*/)
{
    const ScanIsSaid said(plugins.get());
    const auto scan = std::make_shared<AudioPluginScan>(GetSupplier());
    scan->ScanForPlugins(GetNativeWindow(), rescanExistingCheckbox->IsChecked(),
                         !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
                         AudioPluginManager::IsQuickEffectScanFeatureEnabled(),
                         separateProcessCheckbox->IsChecked());
    PopulatePluginList(true, true);
}

void PluginManagerDialog::OnReloadPlugin(ButtonChanged* message)
{
    const PluginListEntry* const entry = RequirePluginList().EntryOfReloadButton(message->GetControl());
    if (!entry)
        return;
    // The entry goes when the list is filled again.
    ReloadPlugin(PluginLocator(entry->locator));
}

void PluginManagerDialog::ReloadPlugin(const PluginLocator& locator)
{
    const int place = RequirePluginList().PlaceOf(locator);
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();

    BannedPluginManager::GetInstance()->RemoveBannedPlugin(locator);
    Preferences preferences(GetSupplier(), GetNativeWindow());
    preferences.SaveBannedList();
    std::vector<PluginLocator> vanished;
    registry.CollectPotentialPlugins(true, vanished);
    // A plug-in that lies in no registered folder any more counts as vanished, too, but can be scanned.
    if (std::find(vanished.begin(), vanished.end(), locator) != vanished.end() &&
        registry.IsFileGone(locator)) {
        registry.RemovePluginLocators({locator});
        preferences.SaveRegistry();
    } else {
        RescanPlugin(locator, preferences);
    }
    PopulatePluginList(true, true);
    RequirePluginList().FocusPlugin(locator, place);
    preferences.TellUser();
}

void PluginManagerDialog::RescanPlugin(const PluginLocator& locator, Preferences& preferences) const
{
    const auto scan = std::make_shared<AudioPluginScan>(GetSupplier());
    scan->ScanForPluginsWithin(
        preferences, GetNativeWindow(), {locator}, !AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(),
        AudioPluginManager::IsQuickEffectScanFeatureEnabled(), separateProcessCheckbox->IsChecked());
}

} // namespace zetaudiopluginhostui
