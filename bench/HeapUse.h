#pragma once

#include <cstddef>

namespace bench {

/// Bytes of memory that this process has asked for and not given back; 0 where that cannot be told.
std::size_t HeapUse();

} // namespace bench
