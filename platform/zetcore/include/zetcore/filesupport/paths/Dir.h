#pragma once

#include <string>
#include <vector>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// The path of a folder. It holds no handle. Any thread.
class ZETCORE_API Dir
{
  public:
    Dir() = default;
    explicit Dir(std::wstring path);

    /// Returns the user's preferences folder. It is the one that `SetPrefDir` set, else `%APPDATA%\<client>`
    /// or `$XDG_CONFIG_HOME/<client>` (`~/.config/<client>`), where the client is `utility::GetClientName()`.
    /// The folder is created if possible. One that cannot be created is returned all the same, and writing to
    /// it raises `file_exception`.
    static Dir PrefDir();

    /// Counts for the whole process. An empty path goes back to the default.
    static void SetPrefDir(const std::wstring& path);

    bool Exists() const;
    /// Creates the folder and its parents, private to the user. Throws `file_exception`.
    void Create() const;
    /// Returns the absolute and normalised path, as far as that is possible without the folder existing. An
    /// empty path stays empty.
    std::wstring FullPath() const;
    bool IsEmpty() const noexcept { return path.empty(); }

  private:
    std::wstring path;
};

} // namespace zetcore::filesupport
