#pragma once

#include <cstdint>
#include <string>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetcore::filesupport {

/// The path of a file. It holds no handle. Any thread. A path with stray units (see string/Utf.h) names the
/// real file.
class ZETCORE_API File
{
  public:
    File() = default;
    explicit File(std::wstring fullPath);
    File(const Dir& folder, const std::wstring& name);

    bool Exists() const;
    /// Deletes the file. A file that is not there is no error. Throws `file_exception`.
    void Delete() const;
    const std::wstring& FullPath() const noexcept { return path; }
    std::string FullPathUTF8() const;
    /// The file name without its folder.
    std::wstring GetTitle() const;
    Dir GetParent() const;

    /// The size in bytes, and the time of the last change in nanoseconds since 1970 (UTC). Both throw
    /// `file_exception`.
    std::uint64_t Size() const;
    std::int64_t ModificationTime() const;

  private:
    std::wstring path;
};

} // namespace zetcore::filesupport
