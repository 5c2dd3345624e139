#pragma once

#include <optional>
#include <string>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// Returns no value when the variable is not set or is empty.
ZETCORE_API std::optional<std::wstring> EnvironmentVariable(const char* name);

} // namespace zetcore::utility
