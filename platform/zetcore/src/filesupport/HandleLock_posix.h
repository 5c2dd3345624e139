#pragma once

#include <chrono>
#include <system_error>

namespace zetcore::filesupport {

/// Takes the exclusive lock of an open file, polling for at most `limit`: `errc::timed_out` after that. The
/// lock ends when the last descriptor of this opening is closed, also by the process's death.
std::error_code LockWithin(int descriptor, std::chrono::milliseconds limit);

} // namespace zetcore::filesupport
