#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

/// How far a replaced file must have come before the call returns.
enum class Durability
{
    /// Whole for every process as long as the system runs; after a power cut the file may be empty. For what
    /// one process hands to another, where nobody reads it later. The cheapest by far on some file systems.
    Handover,
    /// Whole after a crash of this process; after a power cut the old or the new content may be there.
    ProcessCrash,
    /// Also on the medium: whole and new after a power cut.
    PowerCut,
};

/// Whole-file operations; any thread. Every one throws `file_exception`.
class ZETCORE_API FileUtils
{
  public:
    /// Creates or replaces the file atomically: a reader, a crash or a full disk sees the old or the new
    /// content, never a part. The bytes are written as they are. After a power cut the file may be empty
    /// (`Durability::Handover`), so this is for markers and for what can be made again.
    static void SimpleWriteStringToFile(const std::wstring& path, std::string_view bytes);

    /// The same with a choice of durability. A link is followed, and the file's permissions are kept.
    static void ReplaceContent(const std::wstring& path, std::string_view bytes, Durability durability);

    /// Appends the bytes, in one write where the system allows it; creates the file private to the user.
    static void AppendToFile(const std::wstring& path, std::string_view bytes);

    /// The whole content. Files above `maxBytes` (memory is not endless) are refused: `file_too_large`.
    static std::string ReadFile(const File& file, std::uint64_t maxBytes = std::uint64_t{1} << 30);

    /// Renames a damaged file to `<name>.damaged` (`.damaged2` and so on when that is taken) and returns the
    /// new path, so that nothing overwrites what the user may want to repair.
    static std::wstring KeepAside(const File& file);
};

} // namespace zetcore::filesupport
