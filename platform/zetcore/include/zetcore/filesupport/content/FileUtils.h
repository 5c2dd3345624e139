#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

/// How far a replaced file must have come before the call returns.
enum class Durability
{
    /// The file is whole for every process as long as the system runs. After a power cut it may be empty.
    /// This is for what one process hands to another and nobody reads later. It is the cheapest by far on
    /// some file systems.
    Handover,
    /// The file is whole after a crash of this process. After a power cut it may have the old or the new
    /// content.
    ProcessCrash,
    /// The file is also on the medium: it is whole and new after a power cut.
    PowerCut,
};

/// Operations on whole files. Any thread. Every one throws `file_exception`.
class ZETCORE_API FileUtils
{
  public:
    /// Creates or replaces the file atomically: a reader, a crash or a full disk sees the old or the new
    /// content, never a part. The bytes are written as they are. After a power cut the file may be empty
    /// (`Durability::Handover`), so this is for markers and for what can be made again.
    static void SimpleWriteStringToFile(const std::wstring& path, std::string_view bytes);

    /// Does the same with a choice of durability. A link is followed, and the file's permissions are kept.
    static void ReplaceContent(const std::wstring& path, std::string_view bytes, Durability durability);

    /// Appends the bytes, in one write where the system allows it; creates the file private to the user.
    static void AppendToFile(const std::wstring& path, std::string_view bytes);

    /// Returns the whole content. A file above `maxBytes` is refused with `file_too_large`, because memory is
    /// not endless.
    static std::string ReadFile(const File& file, std::uint64_t maxBytes = std::uint64_t{1} << 30);

    /// Renames a damaged file to `<name>.damaged` (`.damaged2` and so on when that is taken) and returns the
    /// new path, so that nothing overwrites what the user may want to repair.
    static std::wstring KeepAside(const File& file);
};

} // namespace zetcore::filesupport
