#include "ProcessMark.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, but leaves a mark in the process, with which some other samples crash.
ZET_VST2_ENTRY
{
    MarkProcess();
    return MakeEffect(Ordinary("Poisons Process", "BaPo"), host);
}
