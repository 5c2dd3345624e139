#include "FolderLock.h"
#include "Vst2Plugin.h"
#include "Wait.h"

using namespace zettestplugin;

namespace {

struct LockWhileLoaded
{
    ~LockWhileLoaded() { GiveUpFolderLock(); }
    const bool isMine = TakeFolderLock();
} lockWhileLoaded;

} // namespace

/// Gives no effect while another of its kind in its folder is loaded in another process.
ZET_VST2_ENTRY
{
    if (!lockWhileLoaded.isMine)
        return nullptr;
    Wait();
    return MakeEffect(Ordinary("Refuses When Locked", "BaLr"), host);
}
