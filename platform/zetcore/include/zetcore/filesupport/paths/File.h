#pragma once

#include <cstdint>
#include <string>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetcore::filesupport {

/// A file's path. Holds no handle; any thread. Paths with stray units (see string/Utf.h) name the real file.
class ZETCORE_API File
{
  public:
    File() = default;
    explicit File(std::wstring fullPath);
    File(const Dir& folder, const std::wstring& name);

    bool Exists() const;
    /// Deletes the file; a file that is not there is no error. Throws `file_exception`.
    void Delete() const;
    const std::wstring& FullPath() const noexcept { return path; }
    std::string FullPathUTF8() const;
    /// The file name without its folder.
    std::wstring GetTitle() const;
    Dir GetParent() const;

    /// Size in bytes, and the time of the last change in nanoseconds since 1970 (UTC). Throw
    /// `file_exception`.
    std::uint64_t Size() const;
    std::int64_t ModificationTime() const;

  private:
    std::wstring path;
};

} // namespace zetcore::filesupport
