#pragma once

#include <string_view>

namespace zetcore::debug {

/// Announces the place and stops this process, if the pipe is still there to be taken. Windows knows no
/// stopped processes: there the pipe is a file, and the process is killed at once.
void AnnounceAndStop(std::string_view place);
[[noreturn]] void KillOwnProcess();

} // namespace zetcore::debug
