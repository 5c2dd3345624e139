#pragma once

namespace zettestplugin {

/// Starts a process outside this one's group that keeps every open file and socket and waits for ever.
void LeaveChild();

} // namespace zettestplugin
