#pragma once

#include <optional>
#include <string>

namespace zetcore::utility {

/// No value when the variable is not set or empty.
std::optional<std::wstring> EnvironmentVariable(const char* name);

} // namespace zetcore::utility
