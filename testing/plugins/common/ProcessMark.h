#pragma once

namespace zettestplugin {

/// Marks this process only. Child processes inherit the environment that carries the mark, and are still not
/// marked.
void MarkProcess();
bool ProcessIsMarked();

} // namespace zettestplugin
