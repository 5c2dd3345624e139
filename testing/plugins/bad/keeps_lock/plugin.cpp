#include "Crash.h"
#include "FolderLock.h"
#include "Vst2Plugin.h"
#include "Wait.h"

using namespace zettestplugin;

/// Crashes when another process has had one of its kind in its folder, and still runs.
ZET_VST2_ENTRY
{
    if (!TakeFolderLock())
        Crash();
    Wait();
    return MakeEffect(Ordinary("Keeps Lock", "BaLk"), host);
}
