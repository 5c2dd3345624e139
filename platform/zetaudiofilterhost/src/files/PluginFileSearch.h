#pragma once

#include <filesystem>
#include <string>
#include <unordered_set>
#include <vector>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>

namespace zetaudiofilterhost {

struct FoundPlugin
{
    /// The path by which it was reached. It may lead through links.
    std::wstring path;
    /// The path with every link followed. One file that is reached twice has the same.
    std::filesystem::path resolved;
};

/// Finds one format's plug-in files in folders, at any depth. Links are followed; what was reached already is
/// not reached again, so a cycle ends. A bundle is one plug-in and not searched inside, whatever its format:
/// a VST3 bundle holds no VST plug-in.
class PluginFileSearch
{
  public:
    explicit PluginFileSearch(const PluginFormat& searched);

    /// False when the folder cannot be reached or read. Folders inside it that cannot be are traced.
    bool SearchFolder(const std::wstring& folder);
    /// Folders that are there, the given ones or inside them, and could not be read.
    const std::vector<UnreadableFolder>& Unreadable() const noexcept { return unreadable; }
    /// In the order of finding: the given folders' order; in each folder, by name, its files before its
    /// folders.
    const std::vector<FoundPlugin>& Found() const noexcept { return found; }

  private:
    struct Place
    {
        std::filesystem::path path;
        std::filesystem::path resolved;
    };
    void AddPlugin(Place plugin);
    /// Appends the folder's subfolders in reverse order. False when it cannot be read.
    bool ReadFolder(const Place& folder, std::vector<Place>& toSearch);
    void Classify(const std::filesystem::directory_entry& entry, const Place& folder,
                  std::vector<Place>& plugins, std::vector<Place>& folders);

    void NoteUnreadable(const std::filesystem::path& path, const std::error_code& error);

    const PluginFormat& format;
    std::unordered_set<std::filesystem::path::string_type> reached;
    std::unordered_set<std::filesystem::path::string_type> unreadableResolved;
    std::vector<UnreadableFolder> unreadable;
    std::vector<FoundPlugin> found;
};

enum class FilePresence
{
    Present,
    Gone,
    /// The system does not tell: there is no permission, or a share is down.
    Unknown,
};
/// Looks for a module of the locator's format at its path.
FilePresence FindPresence(const PluginLocator& module);

} // namespace zetaudiofilterhost
