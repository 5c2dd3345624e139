#pragma once

namespace zettestplugin {

/// Starts a process outside this process's group. It keeps every open file and socket, and waits for ever.
void LeaveChild();

} // namespace zettestplugin
