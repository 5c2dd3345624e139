#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhost/Export.h>
#include <zetcore/filesupport/File.h>

namespace zetaudiopluginhost {

/// Why and when a plug-in was banned. The reason is UTF-8, for people; empty when it is not known. The time
/// is in seconds since 1970 (UTC).
struct BanInfo
{
    std::string reason;
    std::int64_t time = 0;

    friend bool operator==(const BanInfo&, const BanInfo&) = default;
};

/// The plug-ins that must not be loaded: the banned ones, each with a reason, and the list of plug-ins known
/// to be unsupported. Every change is told to the registry, which then leaves the banned ones out. Any
/// thread, but for the iteration: main thread, while nothing changes the list.
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

    /// Bans it. The reason is what the scanner has recorded for it (see `BanReasons`), else empty.
    void AddBannedPlugin(const zetaudiofilterhost::PluginLocator& locator);
    void AddBannedPlugin(const zetaudiofilterhost::PluginLocator& locator, const std::string& reason);
    /// Nothing happens for one that is not banned.
    void RemoveBannedPlugin(const zetaudiofilterhost::PluginLocator& locator);
    /// True for a banned locator, and for one whose whole module is banned.
    bool IsBanned(const zetaudiofilterhost::PluginLocator& locator) const;
    std::optional<BanInfo> GetBanInfo(const zetaudiofilterhost::PluginLocator& locator) const;

    /// Replaces the banned list with the file's. A missing file gives an empty list; a damaged one is traced,
    /// kept aside as
    /// `.damaged`, and leaves an empty list (false, and `GetLoadError` names file and line). Throws
    /// `file_exception` when an existing file cannot be read.
    bool LoadConfiguration(const zetcore::filesupport::File& file);
    /// Atomic replacement. Bans that another program has added to the file since it was last read or written
    /// are taken in first. Throws `file_exception`.
    void SaveConfiguration(const zetcore::filesupport::File& file) const;
    std::string GetLoadError() const;

    /// Replaces the unsupported list. False when the file is missing, unreadable or malformed (the list is
    /// then empty).
    bool LoadStaticConfiguration(const zetcore::filesupport::File& file);
    /// True when an entry with no more than a file name matches: such a module is not loaded at all.
    bool IsUnsupportedFile(const std::wstring& fileName) const;
    bool IsUnsupported(const std::wstring& fileName, std::uint32_t uniqueId, std::int64_t version) const;

    /// Empty, as at program start; for tests.
    void Reset();

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhost
