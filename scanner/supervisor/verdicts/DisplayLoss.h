#pragma once

#include <string_view>

namespace zetaudiofilterscan {

/// True when the output of a process that has ended says that its connection to the display broke. The
/// libraries through which programs talk to a display say so and end the process, whatever the program was
/// doing.
bool TellsOfLostDisplay(std::string_view output);

} // namespace zetaudiofilterscan
