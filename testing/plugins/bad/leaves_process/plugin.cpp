#include "LeaveProcess.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, and leaves a process running.
ZET_VST2_ENTRY
{
    LeaveProcess();
    return MakeEffect(Ordinary("Leaves Process", "BaPr"), host);
}
