#pragma once

#include <chrono>
#include <system_error>

namespace zetcore::filesupport {

/// Takes the exclusive lock of an open file. It polls for at most `limit`, and then returns
/// `errc::timed_out`. `Unlock` ends the lock. It also ends when all descriptors and mappings of this opening
/// are gone, and so with the process.
std::error_code LockWithin(int descriptor, std::chrono::milliseconds limit);
void Unlock(int descriptor);

} // namespace zetcore::filesupport
