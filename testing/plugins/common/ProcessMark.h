#pragma once

namespace zettestplugin {

/// A mark on this process and on no other: child processes, which inherit the environment that carries it,
/// are not marked by it.
void MarkProcess();
bool ProcessIsMarked();

} // namespace zettestplugin
