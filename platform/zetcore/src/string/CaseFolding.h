#pragma once

#include <string_view>

namespace zetcore::string {

/// Both texts are of the same length and not empty.
bool EqualFolded(std::wstring_view left, std::wstring_view right);

} // namespace zetcore::string
