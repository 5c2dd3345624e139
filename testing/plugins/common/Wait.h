#pragma once

#include <chrono>
#include <cstdlib>
#include <thread>

namespace zettestplugin {

/// Waits as a plug-in does that asks a server or a disk. The environment says for how many milliseconds.
inline void Wait()
{
    const char* milliseconds = std::getenv("ZET_TEST_PLUGIN_WAIT");
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds ? std::atoi(milliseconds) : 50));
}

} // namespace zettestplugin
