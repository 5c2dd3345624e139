#include "Connecting.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Its name is what came of it.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary(ConnectOut(), "BaNt"), host);
}
