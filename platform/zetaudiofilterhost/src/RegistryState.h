#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "ConfigurationJournal.h"
#include "ConfigurationText.h"
#include <zetaudiofilterhost/PluginModuleInfoManager.h>

namespace zetaudiofilterhost {

/// What the registry holds. Main thread, but for what `mutex` guards.
struct PluginModuleInfoManager::State
{
    struct Record
    {
        InfoPtr info;
        /// The enabled flag that the saved file has.
        bool savedEnabled = true;
    };
    struct Technology
    {
        std::shared_ptr<PluginTechnology> technology;
        Unknown unknown;
        /// Of the folders that have any, by path.
        std::map<std::wstring, Unknown> folderUnknown;
    };

    State();

    // Content (RegistryState.cpp). Only taking folders raises a signal: the technology's.
    /// A record with a locator of a known technology.
    bool CanHold(const InfoPtr& info);
    void Put(const InfoPtr& info);
    /// Takes the record out and remembers its choice.
    void Forget(const PluginLocator& locator);
    void ForgetModule(const PluginLocator& module);
    /// Disabled when the record that it replaces, or the choice remembered for it, is disabled.
    void GiveChoice(PluginModuleInfo& info);
    void Apply(const RegistryChange& change);
    std::vector<InfoPtr> FindModule(const PluginLocator& module) const;
    void Clear();
    /// Technologies that the configuration does not mention get their default folders.
    void ReplaceContent(Configuration configuration, const std::vector<RegistryChange>& changes);
    void TakeFolders(const std::vector<TechnologyFolders>& given);
    static void SetDefaultFolders(PluginTechnology& technology);
    Technology* FindTechnology(TechnologyType type);

    // Iteration and bans.
    void RebuildIteration();
    /// With the mutex held.
    bool IsBannedLocked(const PluginLocator& locator) const;

    // Saving (RegistryFiles.cpp).
    std::vector<TechnologyFolders> Folders() const;
    Configuration MakeConfiguration(bool withModules) const;
    void SaveWhole(const zetcore::filesupport::File& file, bool withModules);
    void SaveChanges();
    void NoteFlippedRecords();
    void NoteSaved();
    void Touch(const PluginLocator& locator);
    std::vector<std::vector<std::wstring>> FolderPaths() const;
    /// What a scan has found, at once and without a save of its own, so that it is not lost with the process:
    /// into the journal, as long as the file is as this registry has left it. A failure is traced.
    void KeepFindings();
    static std::vector<RegistryChange> ReadJournal(const zetcore::filesupport::File& file,
                                                   std::string_view content);

    // Other programs' saves (RegistryMerge.cpp).
    /// The file holds this, and the folders are as it says.
    void NoteKnown(const zetcore::filesupport::File& file, std::string_view content);
    /// To be called before the file is written in whole, with its lock held.
    void TakeInWhatOthersSaved(const zetcore::filesupport::File& file);
    void TakeRecordsOf(const State& theirs);
    void TakeFoldersOf(const State& theirs);

    std::map<PluginLocator, Record> records;
    std::map<PluginLocator, RememberedChoice> choices;
    std::array<Technology, 3> technologies;
    Unknown unknown;
    std::string version{configurationVersion};
    std::string loadError;
    /// A damaged file that could not be kept aside: it must be before anything is saved there.
    std::wstring damagedPath;
    PluginInfosChangedSignal infosChanged;

    bool incremental = false;
    ConfigurationJournal journal;
    /// What the file was when this registry read or wrote it last.
    struct Known
    {
        std::wstring path;
        ContentTie tie;
        std::uint64_t journalSize = 0;
    };
    std::optional<Known> known;
    /// Since then, by this registry; flipped records come in when they are looked for.
    std::set<PluginLocator> changed;
    std::vector<std::vector<std::wstring>> savedFolderPaths;
    std::shared_ptr<PluginModuleInfo::Changes> recordChanges = std::make_shared<PluginModuleInfo::Changes>();
    std::uint64_t savedEnabledChanges = 0;

    /// Guards what follows; `records` is read under it but changed on the main thread only.
    mutable std::mutex mutex;
    std::set<PluginLocator> banned;
    /// Locators that were banned, until they are removed: they count as known without a record.
    std::set<PluginLocator> everBanned;
    std::vector<InfoPtr> iteration;
    bool iterationStale = false;
};

} // namespace zetaudiofilterhost
