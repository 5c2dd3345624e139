#pragma once

#include <chrono>
#include <cstddef>

namespace zetcore::threads {

std::size_t QueuedCallCount();

/// Runs at most `count` calls of the main thread's queue, and begins none of them after the deadline. Returns
/// how many have run.
std::size_t RunQueuedCalls(std::size_t count, std::chrono::steady_clock::time_point deadline);

} // namespace zetcore::threads
