#pragma once

#include <string_view>

namespace zetcore::string {

/// True when two texts of the same length, which is not 0, are equal without regard to letter case.
bool EqualFolded(std::wstring_view left, std::wstring_view right);

} // namespace zetcore::string
