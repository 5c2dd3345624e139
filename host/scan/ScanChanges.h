#pragma once

#include <map>
#include <string>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiopluginmanager {

/// One plug-in that a scan has changed something about, or has not reached.
struct ChangedPlugin
{
    zetaudiofilterhost::PluginLocator locator;
    /// The plug-in's name, or its file's where it has none. A folder has its path here.
    std::wstring name;
    /// Why the plug-in does not work, could not be read, was not reached or has gone, as far as that is
    /// known. UTF-8. For a banned one, its English words.
    std::string reason;
    /// The reason of a banned one as facts, as far as there are any.
    zetaudiopluginhost::PluginFailures failures = {};

    friend bool operator==(const ChangedPlugin&, const ChangedPlugin&) = default;
};

/// The changes that a scan has made to the list of plug-ins.
struct ScanChanges
{
    /// These work now. Before, they did not work or were not in the list.
    std::vector<ChangedPlugin> added;
    /// The plug-ins of `added` that were banned before.
    std::vector<ChangedPlugin> restored;
    /// These worked before and work now, but their file or version has changed.
    std::vector<ChangedPlugin> updated;
    /// These were in the list and have left it.
    std::vector<ChangedPlugin> removed;
    /// These are banned now. Before, they were not banned, or for another reason or build. A plug-in that was
    /// scanned alone is told even when nothing has changed.
    std::vector<ChangedPlugin> banned;
    /// Files and folders that may not be read.
    std::vector<ChangedPlugin> unreadable;
    /// Files that are no plug-ins for this system, and those that were left out on purpose. All that were
    /// scanned are told, even when nothing has changed, because no list shows them. One in `removed` is not
    /// told twice.
    std::vector<ChangedPlugin> passedOver;
    /// These were to be scanned, but the scan did not reach them.
    std::vector<ChangedPlugin> unreached;

    void Add(const ScanChanges& other);
    friend bool operator==(const ScanChanges&, const ScanChanges&) = default;
};

/// The registry and the banned list as they were at one time. Main thread.
class RegistrySnapshot
{
  public:
    using Locators = std::vector<zetaudiofilterhost::PluginLocator>;

    RegistrySnapshot() = default;
    RegistrySnapshot(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                     const zetaudiopluginhost::BannedPluginManager& bannedList);

    /// The changes that a scan of these plug-ins has made from here to `after`. Other changes are left out,
    /// except that plug-ins of any kind may have gone. `unreached` is copied into the result. A plug-in in it
    /// does not count as gone, even when it is neither listed nor banned any more.
    ScanChanges ChangesTo(const RegistrySnapshot& after, const Locators& scanned,
                          std::vector<ChangedPlugin> unreached) const;

    const std::map<zetaudiofilterhost::PluginLocator, zetaudiopluginhost::BanInfo>& Bans() const noexcept
    {
        return bans;
    }
    /// The plug-in with the name that the snapshot has for it, or else with its file's name.
    ChangedPlugin Named(const zetaudiofilterhost::PluginLocator& locator, std::string reason = {}) const;

  private:
    struct Record
    {
        zetaudiofilterhost::ModuleStatus status;
        std::wstring name, version;
        zetaudiofilterhost::ModuleFileStamp stamp;
        std::string reason;
        /// The plug-in works and is not banned.
        bool listed;
    };

    /// Why a plug-in is in no list, although its file may be there.
    std::string WhyGone(const zetaudiofilterhost::PluginLocator& locator) const;
    bool IsListed(const zetaudiofilterhost::PluginLocator& locator) const;
    bool IsBanned(const zetaudiofilterhost::PluginLocator& locator) const;

    std::map<zetaudiofilterhost::PluginLocator, Record> records;
    std::map<zetaudiofilterhost::PluginLocator, zetaudiopluginhost::BanInfo> bans;
    /// The folders that could not be read, each with the reason.
    std::map<std::wstring, std::string> unreadableFolders;
};

/// Finds the plug-ins that a scan was to scan and did not reach. They were put back as they were (`putBack`),
/// have no record, or have a record that says that they were not scanned. Such a record gives the reason. The
/// others get `reason`. Main thread.
std::vector<ChangedPlugin> FindUnreached(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                                         const zetaudiopluginhost::BannedPluginManager& bannedList,
                                         const RegistrySnapshot::Locators& scanned,
                                         const RegistrySnapshot::Locators& putBack,
                                         const std::string& reason);

} // namespace zetaudiopluginmanager
