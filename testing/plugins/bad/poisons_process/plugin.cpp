#include "ProcessMark.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, but leaves something behind in the process that another plug-in cannot stand.
ZET_VST2_ENTRY
{
    MarkProcess();
    return MakeEffect(Ordinary("Poisons Process", "BaPo"), host);
}
