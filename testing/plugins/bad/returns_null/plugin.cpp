#include "Vst2Plugin.h"

ZET_VST2_ENTRY
{
    return nullptr;
}
