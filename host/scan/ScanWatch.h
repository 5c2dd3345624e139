#pragma once

#include <functional>
#include <vector>

#include <zetaudiopluginhostui/ScanEnd.h>
#include <zetcore/signals/ScopedConnection.h>

#include "scan/ScanChanges.h"

namespace zetaudiopluginmanager {

/// Looks after the registry and the banned list when a scan is over, no matter who has started it. Plug-ins
/// that the scan has not reached come back as they were, with their bans. Both files are saved, and the
/// changes are told. All this happens in the registry's changed signal, and so before the manager's window
/// fills its list again. Main thread.
class ScanWatch
{
  public:
    struct Result
    {
        zetaudiopluginhostui::ScanEnd end;
        std::vector<zetaudiofilterhost::PluginLocator> scanned;
        ScanChanges changes;
        /// The ban of these was lifted for the scan. The scan did not reach them, so they are banned again.
        std::vector<zetaudiofilterhost::PluginLocator> bannedAgain;
    };
    struct Actions
    {
        std::function<void()> saveRegistry, saveBannedList;
        /// It may scan again. The watch then tells of that scan within this call.
        std::function<void(const Result&)> tell;
    };

    ScanWatch(zetaudiofilterhost::PluginModuleInfoManager& registry,
              zetaudiopluginhost::BannedPluginManager& bannedList, Actions actions);
    ScanWatch(const ScanWatch&) = delete;
    ScanWatch& operator=(const ScanWatch&) = delete;

    /// The result of the last scan.
    const Result& Last() const noexcept { return last; }
    /// The registry and the banned list at the last changed signal, or at the start of the watch.
    const RegistrySnapshot& Now() const noexcept { return now; }

  private:
    void OnInfosChanged();
    /// Bans those unreached plug-ins again that had been banned before, and returns them.
    std::vector<zetaudiofilterhost::PluginLocator>
    BanAgain(const std::vector<ChangedPlugin>& unreached) const;

    zetaudiofilterhost::PluginModuleInfoManager& registry;
    zetaudiopluginhost::BannedPluginManager& bannedList;
    Actions actions;
    unsigned scanCount;
    RegistrySnapshot now;
    Result last;
    zetcore::events::ScopedConnection connection;
};

} // namespace zetaudiopluginmanager
