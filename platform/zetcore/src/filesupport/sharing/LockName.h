#pragma once

#include <zetcore/filesupport/paths/File.h>

namespace zetcore::filesupport {

/// The lock file in the runtime folder that stands for this file. Throws `file_exception` when there is no
/// runtime folder.
File LockFileFor(const File& file);

} // namespace zetcore::filesupport
