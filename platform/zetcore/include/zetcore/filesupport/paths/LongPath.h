#pragma once

#include <string>
#include <string_view>

#include <zetcore/Export.h>

/// The two ways of writing a Windows path: as users do, which for most calls of the system ends at 260
/// characters, and behind "\\?\", which does not.
namespace zetcore::filesupport {

/// An absolute path that is near the limit, or will be with what is put beside it, in its long form. In it
/// only backslashes separate, and "." and ".." mean nothing, so that they are resolved. Every other path is
/// given back as it is.
ZETCORE_API std::wstring LongForm(std::wstring_view path);
/// A path as users write it.
ZETCORE_API std::wstring PlainForm(std::wstring_view path);

} // namespace zetcore::filesupport
