#pragma once

#include <optional>
#include <string>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// No value when the variable is not set or empty.
ZETCORE_API std::optional<std::wstring> EnvironmentVariable(const char* name);

} // namespace zetcore::utility
