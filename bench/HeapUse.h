#pragma once

#include <cstddef>

namespace bench {

/// Bytes of memory that this process has allocated and not freed; 0 when the system does not tell.
std::size_t HeapUse();

} // namespace bench
