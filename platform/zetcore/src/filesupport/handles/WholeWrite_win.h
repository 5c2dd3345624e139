#pragma once

#include <string_view>
#include <system_error>

#include <windows.h>

namespace zetcore::filesupport {

/// Writes everything, in several writes where one takes only a part.
std::error_code WriteWhole(HANDLE file, std::string_view bytes);

} // namespace zetcore::filesupport
