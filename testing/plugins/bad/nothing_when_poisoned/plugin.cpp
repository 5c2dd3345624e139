#include "ProcessMark.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Returns null in a process in which poisons_process has been loaded before.
ZET_VST2_ENTRY
{
    return ProcessIsMarked() ? nullptr : MakeEffect(Ordinary("Nothing When Poisoned", "BaNo"), host);
}
