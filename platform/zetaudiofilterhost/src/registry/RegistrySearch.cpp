#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "files/FolderPath.h"
#include "files/PluginFileSearch.h"
#include "registry/RegistryState.h"
#include <zetaudiofilterhost/ModuleFileStamp.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/threads/MainThread.h>

namespace zetaudiofilterhost {

using zetcore::filesupport::FromNativePath;
using zetcore::filesupport::ResolvedPath;
using zetcore::filesupport::ToNativePath;

namespace {

/// One technology's folders and what is in them now.
class FolderContents
{
  public:
    FolderContents(const PluginFormat& format, const PluginTechnology& technology)
        : type(format.type), search(format)
    {
        for (auto folder = technology.DirectoryBegin(); folder != technology.DirectoryEnd(); ++folder) {
            std::error_code error;
            const bool isReached = search.SearchFolder(*folder);
            folders.push_back({*folder, ResolvedPath(ToNativePath(*folder), error), isReached});
        }
        for (const UnreadableFolder& unreadable : search.Unreadable())
            offline.push_back(unreadable.path);
        for (const Folder& folder : folders)
            if (!folder.isReached)
                offline.push_back(folder.path);
        for (const FoundPlugin& plugin : search.Found()) {
            byPath.insert(plugin.path);
            byResolved.emplace(plugin.resolved.native(), plugin.path);
        }
    }

    TechnologyType Type() const noexcept { return type; }

    bool Has(const std::wstring& path) const { return byPath.contains(path); }

    /// The path by which the search found this file; empty when it did not.
    std::wstring FoundAs(const std::filesystem::path& resolved) const
    {
        const auto same = byResolved.find(resolved.native());
        return same == byResolved.end() ? std::wstring() : same->second;
    }

    /// In a folder that could not be reached or read.
    bool IsOffline(const std::wstring& path) const
    {
        return std::any_of(offline.begin(), offline.end(),
                           [&path](const std::wstring& folder) { return IsInsideFolder(path, folder); });
    }

    bool IsInAnyFolder(const std::wstring& path, const std::filesystem::path& resolved) const
    {
        return std::any_of(folders.begin(), folders.end(), [&](const Folder& folder) {
            return IsInsideFolder(path, folder.path) ||
                   (!resolved.empty() && !folder.resolved.empty() &&
                    IsInsideFolder(FromNativePath(resolved), FromNativePath(folder.resolved)));
        });
    }

    /// The found paths, in the order of finding.
    const std::vector<FoundPlugin>& Found() const { return search.Found(); }
    const std::vector<UnreadableFolder>& Unreadable() const { return search.Unreadable(); }

  private:
    struct Folder
    {
        std::wstring path;
        std::filesystem::path resolved;
        bool isReached = false;
    };

    TechnologyType type;
    PluginFileSearch search;
    std::vector<Folder> folders;
    std::vector<std::wstring> offline;
    std::set<std::wstring> byPath;
    std::map<std::filesystem::path::string_type, std::wstring> byResolved;
};

/// The path with the links followed in as much of it as can be reached.
std::filesystem::path ResolvedAsFarAsPossible(const std::filesystem::path& path)
{
    std::filesystem::path rest;
    for (std::filesystem::path start = path; !start.empty() && start != start.root_path();
         start = start.parent_path()) {
        std::error_code error;
        if (const std::filesystem::path resolved = ResolvedPath(start, error); !error)
            return rest.empty() ? resolved : resolved / rest;
        rest = rest.empty() ? start.filename() : start.filename() / rest;
    }
    return path;
}

enum class Whereabouts
{
    Known,
    InNoFolder,
    /// The file is gone, and the folder that held it can be looked at.
    FileGone,
};

/// True when the path is empty. A link that leads nowhere counts as something, because its target may be on a
/// drive that is away.
bool HasBeenTakenOut(const std::filesystem::path& path, bool isFolderReached)
{
    std::error_code error;
    if (std::filesystem::is_symlink(std::filesystem::symlink_status(path, error)))
        return false;
    return isFolderReached || std::filesystem::is_directory(path.parent_path(), error);
}

/// For a known module that the search did not come across under its own path. `knownAs` takes the path under
/// which the search found its file.
Whereabouts FindWhereabouts(const PluginLocator& module, const FolderContents& contents,
                            std::map<std::wstring, std::wstring>& knownAs)
{
    const std::wstring& path = module.GetPath();
    if (contents.IsOffline(path))
        return Whereabouts::Known;
    const std::filesystem::path native = ToNativePath(path);
    const std::filesystem::path resolved = ResolvedAsFarAsPossible(native);
    const bool isInFolder = contents.IsInAnyFolder(path, resolved);
    const FilePresence presence = FindPresence(module);
    if (presence == FilePresence::Gone && HasBeenTakenOut(native, isInFolder))
        return Whereabouts::FileGone;
    if (presence == FilePresence::Gone || !isInFolder)
        return Whereabouts::InNoFolder;
    if (const std::wstring other = contents.FoundAs(resolved); !other.empty())
        knownAs.emplace(other, path);
    return Whereabouts::Known;
}

bool IsWorthScanning(const std::vector<InfoPtr>& infos, const PluginLocator& module)
{
    const auto isToBeTried = [](const InfoPtr& info) {
        return info->GetStatus() == ModuleStatus::Unscanned || info->GetStatus() == ModuleStatus::Unreadable;
    };
    if (infos.empty() || std::any_of(infos.begin(), infos.end(), isToBeTried))
        return true;
    const ModuleFileStamp unknown, now = GetModuleFileStamp(module);
    return std::any_of(infos.begin(), infos.end(), [&](const InfoPtr& info) {
        const ModuleFileStamp scanned{info->GetFileSize(), info->GetFileTime()};
        // When the module was found not to work, its file could not be looked at.
        if (scanned == unknown)
            return info->GetStatus() != ModuleStatus::Working && now != unknown;
        return scanned != now;
    });
}

/// The bans of modules, as a search needs them.
class Bans
{
  public:
    explicit Bans(const std::map<PluginLocator, BannedModule>& all)
    {
        for (const auto& [locator, ban] : all)
            byModule[locator.ModuleLocator()].push_back(ban);
    }

    /// Due ones are to be scanned even when nothing else speaks for it.
    enum class Standing
    {
        NotBanned,
        Banned,
        Due,
    };
    Standing Of(const PluginLocator& module) const
    {
        const auto found = byModule.find(module);
        if (found == byModule.end())
            return Standing::NotBanned;
        const ModuleFileStamp now = GetModuleFileStamp(module);
        bool isDue = false;
        for (const BannedModule& ban : found->second) {
            const bool isThisDue = ban.IsDue(now);
            if (!isThisDue && ban.locator == module)
                return Standing::Banned;
            isDue = isDue || isThisDue;
        }
        return isDue ? Standing::Due : Standing::NotBanned;
    }

  private:
    std::map<PluginLocator, std::vector<BannedModule>> byModule;
};

} // namespace

std::vector<PluginLocator>
PluginModuleInfoManager::CollectPotentialPlugins(bool newOnly, std::vector<PluginLocator>& vanished)
{
    zetcore::threads::AssertMainThread();
    std::set<PluginLocator> known;
    for (const auto& [locator, record] : state->records)
        known.insert(known.end(), locator);
    const Bans bans = [this, &known] {
        const std::lock_guard lock(state->mutex);
        known.insert(state->everBanned.begin(), state->everBanned.end());
        for (const auto& [locator, ban] : state->banned)
            known.insert(locator);
        return Bans(state->banned);
    }();
    std::set<PluginLocator> knownModules;
    for (const PluginLocator& locator : known)
        knownModules.insert(locator.ModuleLocator());

    std::map<PluginLocator, bool> gone;
    std::map<std::wstring, std::string> unreadable;
    std::vector<PluginLocator> potential;
    for (const State::Technology& technology : state->technologies) {
        const FolderContents contents(*technology.format, *technology.technology);
        for (const UnreadableFolder& folder : contents.Unreadable())
            unreadable.emplace(folder.path, folder.reason);
        std::map<std::wstring, std::wstring> knownAs;
        for (const PluginLocator& module : knownModules) {
            if (module.GetTechnologyType() != contents.Type() || contents.Has(module.GetPath()))
                continue;
            if (const Whereabouts at = FindWhereabouts(module, contents, knownAs); at != Whereabouts::Known)
                gone.emplace(module, at == Whereabouts::FileGone);
        }
        for (const FoundPlugin& plugin : contents.Found()) {
            PluginLocator module(contents.Type(), plugin.path);
            // A file that is known by another of its paths stays known by that.
            if (const auto other = knownAs.find(plugin.path);
                other != knownAs.end() && !knownModules.contains(module))
                module = PluginLocator(contents.Type(), other->second);
            const Bans::Standing standing = bans.Of(module);
            if (standing == Bans::Standing::Due ||
                (standing == Bans::Standing::NotBanned &&
                 (!newOnly || IsWorthScanning(state->FindModule(module), module))))
                potential.push_back(std::move(module));
        }
    }
    // Whoever reloads one sub-component asks for it by its own locator.
    for (const PluginLocator& locator : known)
        if (const auto module = gone.find(locator.ModuleLocator()); module != gone.end())
            gone.emplace(locator, module->second);
    vanished.clear();
    for (const auto& [locator, isFileGone] : gone)
        vanished.push_back(locator);
    state->vanished = std::move(gone);
    state->unreadableFolders.clear();
    for (const auto& [path, reason] : unreadable)
        state->unreadableFolders.push_back({path, reason});
    std::sort(potential.begin(), potential.end());
    return potential;
}

const std::vector<UnreadableFolder>& PluginModuleInfoManager::GetUnreadableFolders() const noexcept
{
    zetcore::threads::AssertMainThread();
    return state->unreadableFolders;
}

bool PluginModuleInfoManager::IsFileGone(const PluginLocator& locator) const
{
    return FindPresence(locator) == FilePresence::Gone;
}

} // namespace zetaudiofilterhost
