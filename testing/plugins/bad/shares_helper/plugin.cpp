#include "Crash.h"
#include "Helper.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Crashes when the helper process ends that it shares with the others in its folder, as it does when the
/// worker ends that has started it.
ZET_VST2_ENTRY
{
    if (!AskHelper())
        Crash();
    return MakeEffect(Ordinary("Shares Helper", "BaHe"), host);
}
