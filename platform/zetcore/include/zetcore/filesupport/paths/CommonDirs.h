#pragma once

#include <string>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetcore::filesupport::commondirs {

/// Returns the folder of the running program, or the one that `SetExecutableDir` set. String tables, a
/// default plug-in folder and the scanner are looked for there. An empty path goes back to the default. Any
/// thread.
ZETCORE_API Dir ExecutableDir();
ZETCORE_API void SetExecutableDir(const std::wstring& path);
ZETCORE_API bool IsExecutableDirSet();

/// Returns the user's home folder, which is empty when the user has none.
ZETCORE_API Dir HomeDir();

/// Returns a folder private to the user for what lives only while programs run. It is `$XDG_RUNTIME_DIR`,
/// else `/tmp/zet-<uid>`, which is made with mode 0700 and refused when another user owns it. On Windows it
/// is the temporary folder. Throws `file_exception`.
ZETCORE_API Dir RuntimeDir();

} // namespace zetcore::filesupport::commondirs
