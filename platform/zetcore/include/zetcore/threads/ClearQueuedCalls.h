#pragma once

#include <zetcore/Export.h>

namespace zetcore::threads {

/// Drops all calls that are queued for the main thread; for tests.
ZETCORE_API void ClearQueuedCalls();

} // namespace zetcore::threads
