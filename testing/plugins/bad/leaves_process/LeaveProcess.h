#pragma once

namespace zettestplugin {

/// Starts a process in this process's group that waits for ever.
void LeaveProcess();

} // namespace zettestplugin
