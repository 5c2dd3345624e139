#pragma once

namespace zettestplugin {

/// After this call, a crash ends the process with exit code 0.
void InstallCrashHandler();

} // namespace zettestplugin
