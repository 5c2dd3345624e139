#pragma once

#include <zetaudiofilterhost/PluginLocator.h>

namespace zetaudiofilterscan {

/// Asks the system to read the module's library in the background, so that loading it does not wait for the
/// disk. It takes no longer than opening the file does. It is a request only: what cannot be had is left, and
/// nothing throws. Any thread.
void ReadAhead(const zetaudiofilterhost::PluginLocator& module) noexcept;

} // namespace zetaudiofilterscan
