#include "CloseDescriptors.h"
#include "Vst2Plugin.h"

using namespace zettestplugin;

ZET_VST2_ENTRY
{
    CloseDescriptors();
    return MakeEffect(Ordinary("Closes Descriptors", "BaFd"), host);
}
