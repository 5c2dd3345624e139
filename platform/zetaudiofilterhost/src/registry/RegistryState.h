#pragma once

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "text/ConfigurationJournal.h"
#include "text/ConfigurationText.h"
#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>

namespace zetaudiofilterhost {

struct PluginModuleInfoManager::Copy
{
    /// The asides are copies of the registry's own: a scan changes those in place.
    Configuration content;
    /// One for each record, in their order.
    std::vector<bool> enabled;
};

/// The registry's content. Main thread, except for the members that `mutex` guards.
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
        const PluginFormat* format = nullptr;
        std::shared_ptr<PluginTechnology> technology;
        Unknown unknown;
        /// By path, for the folders that have any.
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
    /// A scan speaks for the whole of each module that it gives records for, except where all of them were
    /// scanned alone.
    void ForgetWhatResultsReplace(const std::vector<InfoPtr>& results);
    Copy MakeCopy() const;
    /// Takes this content, which is not the file's, in the place of what is there.
    void UndoTo(const Copy& copy);
    /// A whole file's: technologies that it does not mention get their default folders. To be called last,
    /// because its signals let others look at the registry.
    void TakeAllFolders(const std::vector<TechnologyFolders>& given);
    /// Disabled when the record that it replaces, or the choice remembered for it, is disabled.
    void GiveChoice(PluginModuleInfo& info);
    void Apply(const RegistryChange& change);
    std::vector<InfoPtr> FindModule(const PluginLocator& module) const;
    void Clear();
    void ReplaceContent(Configuration configuration, const std::vector<RegistryChange>& changes);
    /// The same without the folders.
    void ReplaceRecords(Configuration& configuration, const std::vector<RegistryChange>& changes);
    RegistryChange StateOf(const PluginLocator& locator) const;
    std::map<PluginLocator, std::string> StateTexts() const;
    void TakeFolders(const std::vector<TechnologyFolders>& given);
    static void SetDefaultFolders(const Technology& technology);
    Technology* FindTechnology(TechnologyType type);

    // Records that are aside (RegistryAsides.cpp).
    /// Takes the record out, or all of a module's, until a result comes.
    void SetAside(const PluginLocator& locator);
    void SetModuleAside(const PluginLocator& module);
    /// The aside takes the place of the locator's record.
    void PutAside(const InfoPtr& info);
    /// A result has come for the module: nothing of it is aside any more.
    void DropAsidesOfModule(const PluginLocator& module);
    /// A record is aside whose place a result for this locator takes.
    bool HasAsideFor(const PluginLocator& locator) const;
    /// A result has come for the locator, with others of its module to follow.
    void DropAsidesFor(const PluginLocator& locator);
    void DropBannedAsides();
    std::vector<PluginLocator> PutBack();

    // Iteration and bans (RegistryBans.cpp).
    void RebuildIteration();
    /// The caller holds the mutex.
    bool IsBannedLocked(const PluginLocator& locator) const;
    /// The due bans that these records of scanned modules end.
    std::vector<PluginLocator> BansEndedBy(const std::vector<InfoPtr>& results) const;
    /// The bans that the removal of vanished plug-ins ends.
    std::vector<PluginLocator> BansEndedByRemoving(const std::vector<PluginLocator>& locators) const;
    void TellEnded(const std::vector<PluginLocator>& bans);

    // Saving (RegistryFiles.cpp).
    std::vector<TechnologyFolders> Folders() const;
    Configuration MakeConfiguration(bool withModules) const;
    void SaveWhole(const zetcore::filesupport::File& file, bool withModules);
    void SaveChanges();
    void NoteFlippedRecords();
    void NoteSaved();
    void Touch(const PluginLocator& locator);
    std::vector<std::vector<std::wstring>> FolderPaths() const;
    /// Writes a scan's findings into the journal at once, so that they are not lost with the process, as long
    /// as the file is as this registry has left it. A failure is traced.
    void KeepFindings();
    static std::vector<RegistryChange> ReadJournal(const zetcore::filesupport::File& file,
                                                   std::string_view content,
                                                   const WantedTechnologies& wanted = {});

    // Other programs' saves (RegistryMerge.cpp).
    /// The file holds this, and the folders are as it says.
    void NoteKnown(const zetcore::filesupport::File& file, std::string_view content);
    /// To be called before the file is written in whole, with its lock held.
    void TakeInWhatOthersSaved(const zetcore::filesupport::File& file);
    void TakeRecordsOf(const State& theirs);
    void TakeAsidesOf(const State& theirs);
    void TakeFoldersOf(const State& theirs);

    std::map<PluginLocator, Record> records;
    std::map<PluginLocator, RememberedChoice> choices;
    /// Records that this registry has put aside, or found aside in the file that it loaded. A locator with
    /// one has no record; its choice is among the choices.
    std::map<PluginLocator, InfoPtr> asides;
    /// Records that another program's scan has aside at the moment. The file keeps them for that program.
    std::map<PluginLocator, InfoPtr> othersAsides;
    /// Put back since the last save: what another program's scan found meanwhile is newer.
    std::set<PluginLocator> putBack;
    /// One for each of `PluginFormats`, in that order.
    std::vector<Technology> technologies;
    Unknown unknown;
    std::string version{configurationVersion};
    std::optional<zetcore::utility::Reason> loadError;
    /// A damaged file that could not be kept aside: it must be before anything is saved there.
    std::wstring damagedPath;
    PluginInfosChangedSignal infosChanged;
    BansEndedSignal bansEnded;

    /// The plug-ins that the last search did not find any more, and whether the file is gone while its folder
    /// can be reached. They count until the first removal after it.
    std::map<PluginLocator, bool> vanished;
    std::vector<UnreadableFolder> unreadableFolders;

    bool incremental = false;
    ConfigurationJournal journal;
    /// The file as it was when this registry read or wrote it last.
    struct Known
    {
        std::wstring path;
        ContentFingerprint fingerprint;
        std::uint64_t journalSize = 0;
    };
    std::optional<Known> known;
    /// The locators that this registry has changed since then. Flipped records are added when they are looked
    /// for.
    std::set<PluginLocator> changed;
    std::vector<std::vector<std::wstring>> savedFolderPaths;
    std::shared_ptr<PluginModuleInfo::Changes> recordChanges = std::make_shared<PluginModuleInfo::Changes>();
    std::uint64_t savedEnabledChanges = 0;

    /// Guards what follows; `records` is read under it but changed on the main thread only.
    mutable std::mutex mutex;
    std::map<PluginLocator, BannedModule> banned;
    /// Locators that were banned, until they are removed: they count as known without a record.
    std::set<PluginLocator> everBanned;
    std::vector<InfoPtr> iteration;
    bool iterationStale = false;
};

} // namespace zetaudiofilterhost
