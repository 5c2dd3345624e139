#include "Crash.h"
#include "LeaveChild.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// The child outlives the crash and holds open what the process had open.
ZET_VST2_ENTRY
{
    LeaveChild();
    Crash();
    return MakeEffect(Ordinary("Leaves Child And Crashes", "BaCh"), host);
}
