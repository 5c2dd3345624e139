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
    /// Its own, or its file's; of a folder, the path.
    std::wstring name;
    /// UTF-8; why it does not work, could not be read, was not reached or has gone, as far as that is known.
    std::string reason;

    friend bool operator==(const ChangedPlugin&, const ChangedPlugin&) = default;
};

/// The changes that a scan has made to the list of plug-ins.
struct ScanChanges
{
    /// They work, and were not in the list before, or did not work.
    std::vector<ChangedPlugin> added;
    /// Those of `added` that were banned.
    std::vector<ChangedPlugin> restored;
    /// They worked before and work now, and their file or version is another.
    std::vector<ChangedPlugin> updated;
    /// They were in the list, and are not any more.
    std::vector<ChangedPlugin> removed;
    /// They are banned now, and were not, or for another reason or build, or were the only ones to be
    /// scanned.
    std::vector<ChangedPlugin> banned;
    /// Files and folders that may not be read.
    std::vector<ChangedPlugin> unreadable;
    /// They were to be scanned, and were not.
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

    /// The changes that a scan of these plug-ins has made from here to `after`; other changes meanwhile are
    /// left out, but for what has gone. `unreached` is as given: plug-ins that are listed or banned no more
    /// because they are among them have not gone.
    ScanChanges ChangesTo(const RegistrySnapshot& after, const Locators& scanned,
                          std::vector<ChangedPlugin> unreached) const;

    const std::map<zetaudiofilterhost::PluginLocator, zetaudiopluginhost::BanInfo>& Bans() const noexcept
    {
        return bans;
    }
    /// The name of a plug-in as far as this knows it, else its file's.
    ChangedPlugin Named(const zetaudiofilterhost::PluginLocator& locator, std::string reason = {}) const;

  private:
    struct Record
    {
        zetaudiofilterhost::ModuleStatus status;
        std::wstring name, version;
        zetaudiofilterhost::ModuleFileStamp stamp;
        std::string reason;
        /// It works and is not banned.
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

/// Of the plug-ins that a scan was to scan, those that it has not: they were put back as they were
/// (`putBack`), have no record, or one that says so. Such a record gives the reason; the others have
/// `reason`. Main thread.
std::vector<ChangedPlugin> FindUnreached(const zetaudiofilterhost::PluginModuleInfoManager& registry,
                                         const zetaudiopluginhost::BannedPluginManager& bannedList,
                                         const RegistrySnapshot::Locators& scanned,
                                         const RegistrySnapshot::Locators& putBack,
                                         const std::string& reason);

} // namespace zetaudiopluginmanager
