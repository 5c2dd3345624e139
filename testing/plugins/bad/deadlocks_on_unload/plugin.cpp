#include <semaphore>

#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

/// Waits for something that no thread will ever do.
struct WaitWhileUnloaded
{
    ~WaitWhileUnloaded() { released.acquire(); }
    std::binary_semaphore released{0};
} waitWhileUnloaded;

} // namespace

/// It works until the system unloads the module, or ends a process that still has it loaded.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary("Deadlocks On Unload", "BaDe"), host);
}
