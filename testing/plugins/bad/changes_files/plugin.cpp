#include "ChangeFiles.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Works, after it has tried to change files.
ZET_VST2_ENTRY
{
    ChangeFiles();
    return MakeEffect(Ordinary("Changes Files", "BaCF"), host);
}
