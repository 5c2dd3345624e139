#include "FolderLock.h"
#include "Vst2Plugin.h"
#include "Wait.h"

using namespace zettestplugin;

/// Waits until no other process runs that has had one of its kind in its folder.
ZET_VST2_ENTRY
{
    WaitForFolderLock();
    Wait();
    return MakeEffect(Ordinary("Waits For Lock", "BaLw"), host);
}
