#pragma once

namespace zettestplugin {

/// From now on a crash ends this process with exit code 0.
void InstallCrashHandler();

} // namespace zettestplugin
