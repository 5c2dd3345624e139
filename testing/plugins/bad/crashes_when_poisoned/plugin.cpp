#include "Crash.h"
#include "ProcessMark.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, except in a process in which poisons_process has been loaded before.
ZET_VST2_ENTRY
{
    if (ProcessIsMarked())
        Crash();
    return MakeEffect(Ordinary("Crashes When Poisoned", "BaCp"), host);
}
