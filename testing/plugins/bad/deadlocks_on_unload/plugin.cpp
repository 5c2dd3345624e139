#include <semaphore>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// Waits for something that nobody is left to do.
struct WaitWhileUnloaded
{
    ~WaitWhileUnloaded() { released.acquire(); }
    std::binary_semaphore released{0};
} waitWhileUnloaded;

} // namespace

/// Works until the system unloads the module, or ends a process that has not unloaded it.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary("Deadlocks On Unload", "BaDe"), host);
}
