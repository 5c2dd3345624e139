#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

/// A Windows path can be written in two ways. As users write it, most calls of the system refuse it from 260
/// characters on. Behind "\\?\" it may be longer.
namespace zetcore::filesupport {

/// Returns the long form of an absolute path that is near the limit, or will be with what is put beside it.
/// In the long form only backslashes separate, and "." and ".." mean nothing, so they are resolved here.
/// Every other path comes back as it is.
ZETCORE_API std::wstring LongForm(std::wstring_view path);
/// Returns the path as users write it.
ZETCORE_API std::wstring PlainForm(std::wstring_view path);

} // namespace zetcore::filesupport
