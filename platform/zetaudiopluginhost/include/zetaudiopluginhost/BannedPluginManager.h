#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/Export.h>
#include <zetaudiopluginhost/PluginFailure.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/utility/Reason.h>

namespace zetaudiopluginhost {

/// Why and when a plug-in was banned. The time is in seconds since 1970 (UTC).
struct BanInfo
{
    /// UTF-8, for people; empty when it is not known. Where there are facts, their English words.
    std::string reason;
    std::int64_t time = 0;
    /// The build of the module that is banned: the ban is due when its file has changed. Both 0 for a ban of
    /// every build, which stays until somebody lifts it.
    zetaudiofilterhost::ModuleFileStamp stamp{};
    /// The system refused to load it; a library may be missing, for example. None of its code has crashed, so
    /// every scan tries it again.
    bool couldNotLoad = false;
    /// The reason as facts. Empty for a reason that somebody wrote, and in files of older versions.
    PluginFailures failures = {};

    friend bool operator==(const BanInfo&, const BanInfo&) = default;
};

/// A ban with these facts and their words. The time is not set.
ZETAUDIOPLUGINHOST_API BanInfo BanFor(PluginFailures failures, zetaudiofilterhost::ModuleFileStamp stamp = {},
                                      bool couldNotLoad = false);
/// The reason in the language of the table, or as it was written where there are no facts.
ZETAUDIOPLUGINHOST_API std::string WordReason(const BanInfo& ban, const zetcore::config::Localizer& language);

/// The plug-ins that must not be loaded: the banned ones, each with a reason, and the list of plug-ins known
/// to be unsupported. Every change is told to the registry, which then leaves the banned ones out; bans that
/// the registry finds to have ended leave the one instance. Any thread, but for the iteration: main thread,
/// while nothing changes the list.
///
/// An unsupported entry matches a module whose file name equals its own (letter case apart) and whose unique
/// id and version are equal to those that it has. docs/files.md describes the files.
class ZETAUDIOPLUGINHOST_API BannedPluginManager
{
  public:
    using BannedSet = std::set<zetaudiofilterhost::PluginLocator>;

    static BannedPluginManager* GetInstance();
    BannedPluginManager();
    ~BannedPluginManager();
    BannedPluginManager(const BannedPluginManager&) = delete;
    BannedPluginManager& operator=(const BannedPluginManager&) = delete;

    static std::wstring GetSettingsFileName();
    static std::wstring GetPermanentBannedSettingsFileName();

    BannedSet::const_iterator BannedBegin() const;
    BannedSet::const_iterator BannedEnd() const;

    /// Bans the present build, as a scan does with a plug-in that misbehaved. Reason and build come from the
    /// scanner's record (see `BanReasons`). Without a record there is no reason, and the build is the one
    /// that is there now. A ban of every build stays one.
    void AddBannedPlugin(const zetaudiofilterhost::PluginLocator& locator);
    /// Bans every build, as a user or a host does.
    void AddBannedPlugin(const zetaudiofilterhost::PluginLocator& locator, const std::string& reason);
    /// Bans the plug-in as given. An empty reason does not replace an earlier one, and a time of 0 means now.
    void AddBannedPlugin(const zetaudiofilterhost::PluginLocator& locator, const BanInfo& info);
    /// Does nothing for a plug-in that is not banned.
    void RemoveBannedPlugin(const zetaudiofilterhost::PluginLocator& locator);
    /// True for a banned locator, and for one whose whole module is banned.
    bool IsBanned(const zetaudiofilterhost::PluginLocator& locator) const;
    std::optional<BanInfo> GetBanInfo(const zetaudiofilterhost::PluginLocator& locator) const;
    /// True for a banned one that a scan is to try again: its file is another build than the banned one, or
    /// it only could not be loaded.
    bool IsDueAgain(const zetaudiofilterhost::PluginLocator& locator) const;

    /// Replaces the banned list with the file's. A missing file gives an empty list; a damaged one is traced,
    /// kept aside as `.damaged`, and leaves an empty list (false, and `GetLoadError` names file and line).
    /// Throws `file_exception` when an existing file cannot be read.
    bool LoadConfiguration(const zetcore::filesupport::File& file);
    /// The same for a process that only looks: a damaged file stays where it is.
    bool LoadConfigurationOfOther(const zetcore::filesupport::File& file);
    /// Atomic replacement. What another program has added to the file, changed or lifted since it was last
    /// read or written is taken in first, except where this list has changed the same ban. Throws
    /// `file_exception`.
    void SaveConfiguration(const zetcore::filesupport::File& file) const;
    /// The plug-ins that the file bans. Unlike `LoadConfiguration` it changes neither this list nor the file,
    /// not even a damaged one: that is empty, as is a missing file. Throws `file_exception` when an existing
    /// file cannot be read.
    static BannedSet PeekAtConfiguration(const zetcore::filesupport::File& file);
    /// The damage of the file that was loaded last, with the file's name and line, and where it is kept.
    std::optional<zetcore::utility::Reason> GetLoadError() const;
    /// The bans in a file, for a program that only looks: no list is concerned, nothing is written, and a
    /// damaged file stays where it is. A missing file has no bans. Throws `std::runtime_error` naming file
    /// and line for a damaged one, `file_exception` when it cannot be read.
    static std::map<zetaudiofilterhost::PluginLocator, BanInfo>
    BansInFile(const zetcore::filesupport::File& file);

    /// Replaces the unsupported list. False when the file is missing, unreadable or malformed (the list is
    /// then empty).
    bool LoadStaticConfiguration(const zetcore::filesupport::File& file);
    /// True when an entry with no more than a file name matches: such a module is not loaded at all.
    bool IsUnsupportedFile(const std::wstring& fileName) const;
    bool IsUnsupported(const std::wstring& fileName, std::uint32_t uniqueId, std::int64_t version) const;

  private:
    friend ZETAUDIOPLUGINHOST_API void ResetBannedPlugins(BannedPluginManager& list);

    void Reset();

    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhost
