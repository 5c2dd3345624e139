#include "ProcessMark.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Gives nothing in a process where poisons_process has been before.
ZET_VST2_ENTRY
{
    return ProcessIsMarked() ? nullptr : MakeEffect(Ordinary("Nothing When Poisoned", "BaNo"), host);
}
