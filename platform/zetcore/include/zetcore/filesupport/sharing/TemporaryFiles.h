#pragma once

#include <chrono>
#include <cstddef>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetcore::filesupport {

/// Deletes the temporary files that killed programs have left in the folder. These are files with names as
/// `FileUtils` gives them (".zet-", two hexadecimal numbers, ".tmp") that nobody has written to for that
/// long. Links and folders stay. Returns how many it has deleted. A file that cannot be deleted is traced.
ZETCORE_API std::size_t DeleteAbandonedTemporaries(const Dir& folder,
                                                   std::chrono::seconds age = std::chrono::hours(1));

} // namespace zetcore::filesupport
