#pragma once

#include <string_view>

namespace zetcore::debug {

/// Announces the place and stops this process, if the pipe is still there to be taken.
void AnnounceAndStop(std::string_view place);
[[noreturn]] void KillOwnProcess();

} // namespace zetcore::debug
