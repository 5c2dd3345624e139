#pragma once

#include <atomic>
#include <cstddef>
#include <cstdint>

namespace zetaudiofilterscan {

/// A page of memory that a worker shares with its supervisor. The worker writes each step here. So a step
/// costs no message and no wake-up, and the last one is known after a crash. The supervisor trusts neither
/// word.
struct WorkerPage
{
    /// The number of the entity that is being scanned; 0 before the first.
    std::atomic<std::uint32_t> entity;
    /// A `zetaudiopluginhost::ScanPhase`.
    std::atomic<std::uint32_t> phase;
};

static_assert(std::atomic<std::uint32_t>::is_always_lock_free, "a lock would not work across processes");

inline constexpr std::size_t workerPageBytes = 4096;

} // namespace zetaudiofilterscan
