#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

struct CrashWhileLoaded
{
    CrashWhileLoaded() { Crash(); }
} crashWhileLoaded;

} // namespace

/// This is never reached: an initialiser crashes while the system loads the module.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary("Crash On Load", "BaLd"), host);
}
