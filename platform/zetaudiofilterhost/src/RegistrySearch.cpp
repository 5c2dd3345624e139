#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include <algorithm>
#include <filesystem>
#include <map>
#include <set>

#include "FolderPath.h"
#include "NativePath.h"
#include "PluginFileSearch.h"
#include "RegistryState.h"
#include <zetaudiofilterhost/ModuleFileStamp.h>

namespace zetaudiofilterhost {

namespace {

/// One technology's folders and what is in them now.
class FolderContents
{
  public:
    explicit FolderContents(const PluginTechnology& technology) : type(technology.GetType()), search(type)
    {
        for (auto folder = technology.DirectoryBegin(); folder != technology.DirectoryEnd(); ++folder) {
            std::error_code error;
            const bool isReached = search.SearchFolder(*folder);
            folders.push_back({*folder, ResolvedPath(ToNativePath(*folder), error), isReached});
        }
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

    bool IsInUnreachableFolder(const std::wstring& path) const
    {
        return std::any_of(folders.begin(), folders.end(), [&path](const Folder& folder) {
            return !folder.isReached && IsInsideFolder(path, folder.path);
        });
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
    std::set<std::wstring> byPath;
    std::map<std::filesystem::path::string_type, std::wstring> byResolved;
};

/// For a known module that the search did not come across under its own path: whether it has vanished.
/// `knownAs` takes the path under which the search found its file.
bool HasVanished(const PluginLocator& module, const FolderContents& contents,
                 std::map<std::wstring, std::wstring>& knownAs)
{
    const std::wstring& path = module.GetPath();
    if (contents.IsInUnreachableFolder(path))
        return false;
    std::error_code error;
    const std::filesystem::path resolved = ResolvedPath(ToNativePath(path), error);
    const FilePresence presence = FindPresence(module);
    if (presence == FilePresence::Gone || !contents.IsInAnyFolder(path, resolved))
        return true;
    if (const std::wstring other = contents.FoundAs(resolved); !other.empty())
        knownAs.emplace(other, path);
    return false;
}

bool IsWorthScanning(const std::vector<InfoPtr>& infos, const PluginLocator& module)
{
    const auto isUnscanned = [](const InfoPtr& info) { return info->GetStatus() == ModuleStatus::Unscanned; };
    if (infos.empty() || std::any_of(infos.begin(), infos.end(), isUnscanned))
        return true;
    const ModuleFileStamp now = GetModuleFileStamp(module);
    return std::any_of(infos.begin(), infos.end(), [&now](const InfoPtr& info) {
        const ModuleFileStamp scanned{info->GetFileSize(), info->GetFileTime()};
        return scanned != ModuleFileStamp() && scanned != now;
    });
}

} // namespace

std::vector<PluginLocator>
PluginModuleInfoManager::CollectPotentialPlugins(bool newOnly, std::vector<PluginLocator>& vanished)
{
    std::set<PluginLocator> banned;
    std::set<PluginLocator> withoutRecord;
    {
        const std::lock_guard lock(state->mutex);
        banned = state->banned;
        withoutRecord = state->everBanned;
    }
    withoutRecord.insert(banned.begin(), banned.end());
    std::set<PluginLocator> known;
    for (const auto& [locator, record] : state->records)
        known.insert(known.end(), locator.ModuleLocator());
    for (const PluginLocator& locator : withoutRecord)
        known.insert(locator.ModuleLocator());

    std::set<PluginLocator> gone;
    std::vector<PluginLocator> potential;
    for (const State::Technology& technology : state->technologies) {
        const FolderContents contents(*technology.technology);
        std::map<std::wstring, std::wstring> knownAs;
        for (const PluginLocator& module : known)
            if (module.GetTechnologyType() == contents.Type() && !contents.Has(module.GetPath()) &&
                HasVanished(module, contents, knownAs))
                gone.insert(module);
        for (const FoundPlugin& plugin : contents.Found()) {
            PluginLocator module(contents.Type(), plugin.path);
            // A file that is known by another of its paths stays known by that.
            if (const auto other = knownAs.find(plugin.path);
                other != knownAs.end() && !known.contains(module))
                module = PluginLocator(contents.Type(), other->second);
            if (!banned.contains(module) && (!newOnly || IsWorthScanning(state->FindModule(module), module)))
                potential.push_back(std::move(module));
        }
    }
    // Whoever banned or reloads one sub-component asks for it by its own locator.
    for (const PluginLocator& locator : withoutRecord)
        if (gone.contains(locator.ModuleLocator()))
            gone.insert(locator);
    vanished.assign(gone.begin(), gone.end());
    std::sort(potential.begin(), potential.end());
    return potential;
}

} // namespace zetaudiofilterhost
