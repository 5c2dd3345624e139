#pragma once

#include <chrono>
#include <system_error>

namespace zetcore::filesupport {

/// Takes the exclusive lock of an open file, polling for at most `limit`: `errc::timed_out` after that. The
/// lock ends by `Unlock`, and when all descriptors and mappings of this opening are gone (so with its
/// process).
std::error_code LockWithin(int descriptor, std::chrono::milliseconds limit);
void Unlock(int descriptor);

} // namespace zetcore::filesupport
