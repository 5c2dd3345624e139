#include "Hang.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

namespace {

struct HangWhileLoaded
{
    HangWhileLoaded() { Hang(); }
} hangWhileLoaded;

} // namespace

/// This is never reached: an initialiser hangs while the system loads the module.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary("Hangs On Load", "BaHl"), host);
}
