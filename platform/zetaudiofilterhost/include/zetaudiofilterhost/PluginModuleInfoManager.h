#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <zetaudiofilterhost/Export.h>
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiofilterhost/PluginModuleInfo.h>
#include <zetaudiofilterhost/PluginTechnology.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/signals/Signal.h>
#include <zetcore/utility/Reason.h>

namespace zetaudiofilterhost {

/// One banned plug-in, as the registry needs it. A locator without sub-component covers its whole module.
struct BannedModule
{
    PluginLocator locator;
    /// The build that is banned; both 0 when every build is.
    ModuleFileStamp stamp{};
    /// The ban does not say that the plug-in is bad, so that every scan tries it again.
    bool triedByEveryScan = false;

    /// True when a scan is to try the plug-in again. The stamp is the module's present one.
    bool IsDue(const ModuleFileStamp& now) const noexcept
    {
        const ModuleFileStamp unknown;
        return triedByEveryScan || (stamp != unknown && now != unknown && now != stamp);
    }
};

/// A folder with plug-ins that could not be read; the reason is UTF-8, for people.
struct UnreadableFolder
{
    std::wstring path;
    std::string reason;
};

/// The registry: every module that a scan has seen, the folders of each technology, and the users' choices.
///
/// It keeps records of modules that do not work too, so that a scan for new ones passes them over until their
/// file changes; only working ones that are not banned are iterated, ordered by locator. Choices (enabled or
/// not) follow the plug-in's identity: a record that is removed and comes back has the choice that it had.
/// A record that is removed to be scanned is kept aside until its result comes, or is put back.
/// Main thread, but for what says otherwise.
///
/// docs/files.md describes the file.
class ZETAUDIOFILTERHOST_API PluginModuleInfoManager
{
  public:
    using PluginInfosChangedSignal = zetcore::events::Signal<>;
    using BansEndedSignal = zetcore::events::Signal<const std::vector<PluginLocator>&>;
    using InfoPtr = std::shared_ptr<PluginModuleInfo>;
    /// Random access; valid until the registry changes. Setting a record's enabled flag is no such change.
    using PluginInfoIterator = std::vector<InfoPtr>::const_iterator;

    static PluginModuleInfoManager* GetInstance();
    PluginModuleInfoManager();
    ~PluginModuleInfoManager();
    PluginModuleInfoManager(const PluginModuleInfoManager&) = delete;
    PluginModuleInfoManager& operator=(const PluginModuleInfoManager&) = delete;

    /// The file's name inside the preferences folder.
    static std::wstring GetSettingsFileName();

    PluginInfoIterator PluginInfoBegin();
    PluginInfoIterator PluginInfoEnd();
    /// Any record, working or not, banned or not; null when there is none.
    InfoPtr Find(const PluginLocator& locator) const;
    /// Every record of the module (its sub-components included), whatever their status.
    std::vector<InfoPtr> FindModule(const PluginLocator& module) const;
    std::size_t RecordCount() const;
    /// How often records have been changed while they were in the registry. Adding, replacing and removing
    /// records is no such change. Whoever keeps what it has read of them compares. Any thread.
    struct RecordChanges
    {
        std::uint64_t enabled = 0;
        /// Changes of everything else that a record tells.
        std::uint64_t content = 0;

        friend bool operator==(const RecordChanges&, const RecordChanges&) = default;
    };
    RecordChanges GetRecordChanges() const noexcept;
    /// Every record, whatever its status, banned or not, ordered by locator.
    std::vector<InfoPtr> AllRecords() const;

    /// Null for a technology that is not among `PluginFormats`.
    std::shared_ptr<PluginTechnology> GetPluginTechnology(TechnologyType type);
    std::shared_ptr<PluginTechnology> GetPluginTechnology(int type);
    /// The default folders are a technology's documented locations on this platform, whether or not they
    /// exist. VST gets them in place of its own, because its folders are what the manager dialog shows and
    /// asks about; another technology only when it has no folder at all.
    void ResetToDefaultFolders();
    /// Every technology gets its default folders in place of its own.
    void ResetAllToDefaultFolders();

    /// The plug-in files in the registered folders, ordered by locator. Banned ones are left out until their
    /// ban is due. With `newOnly`, only those without a record, with an unscanned or unreadable one, whose
    /// file has changed since it was scanned, or whose ban is due. `vanished` receives the known modules
    /// whose file is gone or lies in no registered folder any more, and each known sub-component of such a
    /// module; those of a folder that cannot be reached or read are offline and not among them. A banned
    /// module counts as known.
    std::vector<PluginLocator> CollectPotentialPlugins(bool newOnly, std::vector<PluginLocator>& vanished);
    /// The folders that could not be read at the last `CollectPotentialPlugins`, ordered by path; folders
    /// that do not exist are not among them.
    const std::vector<UnreadableFolder>& GetUnreadableFolders() const noexcept;
    /// True when nothing is at the path of the locator's module: what tells the `vanished` whose file is gone
    /// from those that lie in no registered folder any more. Any thread.
    bool IsFileGone(const PluginLocator& locator) const;

    /// Takes out the records of these modules (a locator without sub-component stands for all of its
    /// module's), remembering the choices. What the last `CollectPotentialPlugins` reported as vanished, when
    /// this is the first removal after it, goes for good; every other record is taken for one that is about
    /// to be scanned, and kept aside: in memory and in the file, but not listed or found by anything here. It
    /// stays aside until a result for its module comes, or its module is banned.
    void RemovePluginLocators(const std::vector<PluginLocator>& locators);
    /// Puts back every record that is still aside: a scan has not reached it. To be called after a scan, and
    /// after loading a file that an interrupted scan has left. Returns the locators, ordered.
    std::vector<PluginLocator> PutBackUnreached();
    /// Adds or replaces one record and gives it its remembered choice. Between `BeginIncrementalSaves` and
    /// `EndIncrementalSaves` it is what a scan found, goes to the journal as with `AddConfiguration`, and may
    /// end a ban.
    void AddModule(InfoPtr info);
    /// The same for several, with one write to the journal: what one file holds.
    void AddModules(std::vector<InfoPtr> infos);

    /// Merges the records of a configuration text. With `withFolders`, also takes its folders and choices.
    /// Without, it is what a scan found: for each module that it mentions, its records take the place of all
    /// that the module had (only of their own, when all of them were scanned alone), and a record that the
    /// user disabled, or the choice remembered for it, keeps it disabled; and it goes to the journal of the
    /// file that was saved last, as long as that file is as this registry left it, so that a crash does not
    /// lose it. An unscanned result says nothing about its module: where records of the module are aside, it
    /// is left out, so that they can be put back; and it ends no ban. Throws `std::runtime_error` naming the
    /// line for a text that is no configuration; the registry is then unchanged.
    void AddConfiguration(const std::string& utf8Text, bool withFolders);
    /// A configuration text with just these records: what the scanner hands over.
    static std::string ToConfigurationText(const std::vector<InfoPtr>& infos);
    /// The records of these technologies in a registry file and its journal, whatever their status, ordered
    /// by locator; for a program that only looks. No registry is concerned, nothing is written, and a damaged
    /// file stays where it is. What the file says of other technologies is not read. A missing file has no
    /// records. Throws `std::runtime_error` naming file and line for a damaged one, `file_exception` when it
    /// cannot be read.
    static std::vector<InfoPtr> RecordsInFile(const zetcore::filesupport::File& file,
                                              const std::vector<TechnologyType>& technologies);

    /// The whole registry (folders, records, choices and what is aside) as a configuration text: what a save
    /// would write.
    std::string ToText() const;
    /// The registry at a moment. It shares the records, so that it takes little room however many there are.
    struct Copy;
    std::shared_ptr<const Copy> MakeCopy() const;
    /// Undoes in memory what cannot be undone from the disk: replaces the content as `LoadConfiguration`
    /// does. What somebody has changed inside a record that was there when the copy was made stays, but for
    /// its enabled flag.
    void UndoTo(const Copy& copy);

    /// Writes folders, records and choices by atomic replacement; with `withModules` false, folders only.
    /// When another program has saved the file since this registry last read or wrote it, what that one
    /// wrote is first taken in (records are replaced in memory, iterators become invalid): of a record,
    /// choice or folder list that this registry has changed meanwhile, its own state goes; everything else
    /// is as the file says, but for what the file does not mention, which stays.
    /// Between `BeginIncrementalSaves` and `EndIncrementalSaves` a save writes only what has changed since
    /// the last one, into a journal beside the file, which loading takes into account; the first one writes
    /// the whole file. The pair does not nest: the first end ends it. Throws `file_exception`.
    void SaveConfiguration(const zetcore::filesupport::File& file, bool withModules);
    void BeginIncrementalSaves();
    void EndIncrementalSaves();

    /// Replaces the registry with the file's content; a missing file gives an empty registry with default
    /// folders. What an interrupted scan has left aside stays aside. What killed saves have left in its
    /// folder goes. A damaged file is traced, kept aside as
    /// `.damaged`, and leaves an empty registry with default folders; false then, and `GetLoadError` says
    /// what was wrong (file name and line). Throws `file_exception` when an existing file cannot be read.
    bool LoadConfiguration(const zetcore::filesupport::File& file);
    /// The damage of the file that was loaded last, with the file's name and line, and where it is kept.
    std::optional<zetcore::utility::Reason> GetLoadError() const;

    /// The full path text of the locator's module, for showing.
    std::wstring GetDisplayStringForLocator(const PluginLocator& locator) const;

    PluginInfosChangedSignal& GetPluginInfosChangedSignal() noexcept;

    /// Called by the list of banned plug-ins on every change of it. Any thread.
    void SetBannedLocators(std::vector<BannedModule> banned);
    /// Raised on the main thread with the locators of bans that have ended, ordered: a scan gave a record for
    /// a plug-in whose ban was due (any but an unscanned or unreadable one), or a banned plug-in was removed
    /// whose file is gone while its folder can be reached. The list of banned plug-ins takes them out.
    BansEndedSignal& GetBansEndedSignal() noexcept;

  private:
    friend ZETAUDIOFILTERHOST_API void ResetRegistry(PluginModuleInfoManager& registry);

    void Reset();

    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiofilterhost
