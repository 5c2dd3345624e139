#include "Crash.h"
#include "ProcessMark.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works once in a process. It crashes when poisons_process has been loaded in the process before.
ZET_VST2_ENTRY
{
    if (ProcessIsMarked())
        Crash();
    MarkProcess();
    return MakeEffect(Ordinary("Crashes When Loaded Twice", "BaTw"), host);
}
