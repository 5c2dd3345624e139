#pragma once

#include <cstdint>
#include <optional>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

struct FileFacts
{
    /// Bytes.
    std::uint64_t size = 0;
    /// Nanoseconds since 1970, UTC.
    std::int64_t modificationTime = 0;
};

/// Asks the system once for both facts, which `File::Size` and `File::ModificationTime` tell one by one.
/// Empty unless it is a regular file that can be reached, or a link to one. Any thread.
ZETCORE_API std::optional<FileFacts> FindFileFacts(const File& file);

} // namespace zetcore::filesupport
