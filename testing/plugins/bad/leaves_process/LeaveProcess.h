#pragma once

namespace zettestplugin {

/// Starts a process of this one's group that waits for ever.
void LeaveProcess();

} // namespace zettestplugin
