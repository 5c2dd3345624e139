#pragma once

namespace zettestplugin {

/// One lock for all modules in this module's folder: one process has it at a time. The system gives it up
/// when the process ends.

/// False when another process has it.
bool TakeFolderLock();
void WaitForFolderLock();
void GiveUpFolderLock();

} // namespace zettestplugin
