#include "Connecting.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

/// Its name is the outcome of the connection.
ZET_VST2_ENTRY
{
    return MakeEffect(Ordinary(ConnectOut(), "BaNt"), host);
}
