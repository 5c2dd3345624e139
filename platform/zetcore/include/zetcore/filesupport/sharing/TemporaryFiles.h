#pragma once

#include <chrono>
#include <cstddef>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetcore::filesupport {

/// Deletes what replacements that were killed have left in the folder: files that are named as `FileUtils`
/// names its temporary ones (".zet-", two hexadecimal numbers, ".tmp") and have not been written to for that
/// long. Links and folders stay. Gives how many; what cannot be deleted is traced.
ZETCORE_API std::size_t DeleteAbandonedTemporaries(const Dir& folder,
                                                   std::chrono::seconds age = std::chrono::hours(1));

} // namespace zetcore::filesupport
