#pragma once

#include <cstdint>

#include <zetcore/Export.h>

namespace zetcore::process {

/// The number that the system gives this process. Any thread.
ZETCORE_API std::uint64_t OwnProcessNumber();

} // namespace zetcore::process
