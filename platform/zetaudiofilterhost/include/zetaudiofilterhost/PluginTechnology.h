#pragma once

#include <memory>
#include <string>
#include <vector>

#include <zetaudiofilterhost/Export.h>
#include <zetaudiofilterhost/PluginLocator.h>
#include <zetcore/signals/Signal.h>

namespace zetaudiofilterhost {

/// One technology's plug-in folders, in the order in which they are searched. Owned by the registry; main
/// thread.
class ZETAUDIOFILTERHOST_API PluginTechnology : public std::enable_shared_from_this<PluginTechnology>
{
  public:
    using DirectoriesChangedSignal = zetcore::events::Signal<std::shared_ptr<PluginTechnology>>;
    using DirectoryIterator = std::vector<std::wstring>::const_iterator;

    explicit PluginTechnology(TechnologyType type);

    TechnologyType GetType() const noexcept { return type; }
    /// Valid until the folders change.
    DirectoryIterator DirectoryBegin() const noexcept { return directories.begin(); }
    DirectoryIterator DirectoryEnd() const noexcept { return directories.end(); }

    /// Adds what is not there yet (a folder is kept once, however its path is written: trailing separators
    /// and "." apart). Relative paths are made absolute at once. Raises the signal once when anything
    /// changed.
    void AddPluginDirectories(const std::vector<std::wstring>& paths);
    void RemovePluginDirectories(const std::vector<std::wstring>& paths);
    void SetPluginDirectories(const std::vector<std::wstring>& paths);

    DirectoriesChangedSignal& GetDirectoriesChangedSignal() noexcept { return directoriesChanged; }

  private:
    TechnologyType type;
    std::vector<std::wstring> directories;
    DirectoriesChangedSignal directoriesChanged;
};

} // namespace zetaudiofilterhost
