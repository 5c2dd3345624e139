#include "Crash.h"
#include "FolderLock.h"
#include "Vst2Plugin.h"
#include "Wait.h"

using namespace zettestplugin;

namespace {

struct LockWhileLoaded
{
    LockWhileLoaded()
    {
        if (!TakeFolderLock())
            Crash();
    }
    ~LockWhileLoaded() { GiveUpFolderLock(); }
} lockWhileLoaded;

} // namespace

/// Bears no other of its kind in its folder while it is loaded, except in its own process.
ZET_VST2_ENTRY
{
    Wait();
    return MakeEffect(Ordinary("Crashes When Locked", "BaLc"), host);
}
