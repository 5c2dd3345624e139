#include "Crash.h"
#include "CrashHandler.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Crashes, and its crash handler makes that look like a clean exit.
ZET_VST2_ENTRY
{
    InstallCrashHandler();
    Crash();
    return MakeEffect(Ordinary("Installs Crash Handler", "BaCh"), host);
}
