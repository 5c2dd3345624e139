#pragma once

namespace bench {

/// Empties the system's cache of files, so that everything comes from the disk. False where the system or the
/// user's rights do not allow it.
bool DropFileCache();

} // namespace bench
