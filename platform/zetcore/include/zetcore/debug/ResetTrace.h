#pragma once

#include <zetcore/Export.h>

namespace zetcore::debug {

/// Sets volume, categories and sink as they were at program start; for tests.
ZETCORE_API void ResetTrace();

} // namespace zetcore::debug
