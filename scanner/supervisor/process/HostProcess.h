#pragma once

#include <cstdint>

namespace zetaudiofilterscan {

/// The process that has started this one; 0 when the system does not tell. Call it first of all: when that
/// one has ended, the system gives this process another parent.
std::uint64_t HostProcessNumber();

/// True when that process has ended; false when the system does not tell.
bool HostProcessHasEnded(std::uint64_t number);

/// True when that process has the port block open, as a host has that waits for the port; a scanner whose
/// host was killed while it started has another parent by then. True also when the system does not tell.
bool HostProcessIsWaiting(std::uint64_t number);

} // namespace zetaudiofilterscan
