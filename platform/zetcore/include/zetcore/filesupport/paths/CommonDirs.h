#pragma once

#include <string>

#include <zetcore/Export.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetcore::filesupport::commondirs {

/// The folder of the running program, or what `SetExecutableDir` gave: a host that keeps the scanner
/// elsewhere says so there. An empty path goes back to the default. Any thread.
ZETCORE_API Dir ExecutableDir();
ZETCORE_API void SetExecutableDir(const std::wstring& path);

/// The user's home folder; empty when there is none.
ZETCORE_API Dir HomeDir();

/// A folder private to the user for what lives only while programs run: `$XDG_RUNTIME_DIR`, else
/// `/tmp/zet-<uid>` (made with mode 0700, refused when another user owns it); on Windows the temporary
/// folder. Throws `file_exception`.
ZETCORE_API Dir RuntimeDir();

} // namespace zetcore::filesupport::commondirs
