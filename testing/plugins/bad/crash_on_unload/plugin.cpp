#include "Crash.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

struct CrashWhileUnloaded
{
    ~CrashWhileUnloaded() { Crash(); }
} crashWhileUnloaded;

} // namespace

/// It works until the system unloads the module, or ends a process that still has it loaded.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary("Crash On Unload", "BaUn"), host);
}
