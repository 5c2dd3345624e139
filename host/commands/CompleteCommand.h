#pragma once

#include <iosfwd>
#include <string>
#include <vector>

#include "session/ExitStatus.h"

namespace zetaudiopluginmanager {

/// The lists that shells may ask for.
std::vector<std::string> CompletionLists();

/// Prints one of these lists for a shell that completes a word: `banned` plug-ins or `languages`, one a line.
/// It changes nothing on the disk, and what cannot be read or has a line's end in its name is left out,
/// because the user has not called a command yet. Throws `usage_error` for another list. Main thread.
ExitStatus RunCompleteCommand(const std::string& list, std::ostream& output);

} // namespace zetaudiopluginmanager
