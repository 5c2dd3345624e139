#include <thread>

#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, but leaves a thread running in the module's code. Unloading the module removes the code, and the
/// process crashes then or a moment later.
ZET_VST2_ENTRY
{
    std::thread([] {
        volatile bool goOn = true;
        while (goOn)
            std::this_thread::yield();
    }).detach();
    return MakeEffect(Ordinary("Leaves Threads", "BaTh"), host);
}
