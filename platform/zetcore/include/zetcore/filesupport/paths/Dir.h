#pragma once

#include <string>
#include <vector>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// A folder's path. Holds no handle; any thread.
class ZETCORE_API Dir
{
  public:
    Dir() = default;
    explicit Dir(std::wstring path);

    /// The user's preferences folder: what `SetPrefDir` gave, else `%APPDATA%\<client>` or
    /// `$XDG_CONFIG_HOME/<client>` (`~/.config/<client>`), the client being `utility::GetClientName()`.
    /// The folder is created when it can be; a folder that cannot be is returned all the same, and writing to
    /// it raises `file_exception`.
    static Dir PrefDir();

    /// Process-wide. An empty path goes back to the default.
    static void SetPrefDir(const std::wstring& path);

    bool Exists() const;
    /// Creates the folder and its parents, private to the user. Throws `file_exception`.
    void Create() const;
    /// Absolute and normalised where that is possible without the folder existing; empty for an empty path.
    std::wstring FullPath() const;
    bool IsEmpty() const noexcept { return path.empty(); }

  private:
    std::wstring path;
};

} // namespace zetcore::filesupport
