#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

struct CrashWhileLoaded
{
    CrashWhileLoaded() { Crash(); }
} crashWhileLoaded;

} // namespace

/// Never gets this far: an initialiser crashes while the system loads the module.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary("Crash On Load", "BaLd"), host);
}
