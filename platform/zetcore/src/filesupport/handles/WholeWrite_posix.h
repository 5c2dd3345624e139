#pragma once

#include <string_view>
#include <system_error>

namespace zetcore::filesupport {

/// Writes everything, in several writes where one takes only a part.
std::error_code WriteWhole(int descriptor, std::string_view bytes);

} // namespace zetcore::filesupport
