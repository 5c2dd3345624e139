#include "Vst2Plugin.h"

using namespace zettestplugin;

/// A shell that lists nothing.
ZET_VST2_ENTRY
{
    Vst2Description shell = Ordinary("Empty Shell", "BaEm");
    shell.category = CategoryShell;
    return MakeEffect(shell, host);
}
