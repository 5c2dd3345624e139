#pragma once

#include <memory>
#include <utility>

#include <zettransport/ByteStream.h>
#include <zettransport/Export.h>

namespace zettransport {

/// Makes two streams in memory, each the other's far end. What one writes, the other delivers, on a thread
/// that the pair has. For tests, and for hosts that run both sides in one process. The destruction of the
/// last of the two waits for a handler that is running, except on that thread itself.
ZETTRANSPORT_API std::pair<std::shared_ptr<ByteStream>, std::shared_ptr<ByteStream>> CreateMemoryStreamPair();

} // namespace zettransport
