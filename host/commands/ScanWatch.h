#pragma once

#include <functional>
#include <vector>

#include <zetaudiopluginhostui/ScanEnd.h>
#include <zetcore/signals/ScopedConnection.h>

#include "commands/ScanChanges.h"

namespace zetaudiopluginmanager {

/// Looks after the registry and the banned list when a scan is over, whoever has started it: what the scan
/// has not reached comes back as it was, bans included, both files are saved, and what has changed is told.
/// It does so in the registry's changed signal, and therefore before the manager's window fills its list
/// again. Main thread.
class ScanWatch
{
  public:
    struct Result
    {
        zetaudiopluginhostui::ScanEnd end;
        std::vector<zetaudiofilterhost::PluginLocator> scanned;
        ScanChanges changes;
        /// Their ban was lifted for the scan, which did not reach them: they are banned again.
        std::vector<zetaudiofilterhost::PluginLocator> bannedAgain;
    };
    struct Actions
    {
        std::function<void()> saveRegistry, saveBannedList;
        /// May scan again: the watch then tells of that scan while it tells of this one.
        std::function<void(const Result&)> tell;
    };

    ScanWatch(zetaudiofilterhost::PluginModuleInfoManager& registry,
              zetaudiopluginhost::BannedPluginManager& bannedList, Actions actions);
    ScanWatch(const ScanWatch&) = delete;
    ScanWatch& operator=(const ScanWatch&) = delete;

    /// Of the last scan.
    const Result& Last() const noexcept { return last; }
    /// As they were when the watch began, when the last scan ended, or when anything else was last signalled.
    const RegistrySnapshot& Now() const noexcept { return now; }

  private:
    void OnInfosChanged();
    /// Plug-ins that were not reached and had been banned before.
    std::vector<zetaudiofilterhost::PluginLocator>
    BanAgain(const std::vector<ChangedPlugin>& unreached) const;

    zetaudiofilterhost::PluginModuleInfoManager& registry;
    zetaudiopluginhost::BannedPluginManager& bannedList;
    Actions actions;
    unsigned scanCount;
    RegistrySnapshot now;
    Result last;
    zetcore::signals::ScopedConnection connection;
};

} // namespace zetaudiopluginmanager
