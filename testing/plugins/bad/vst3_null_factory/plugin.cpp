#include "Vst3Plugin.h"

ZET_VST3_FACTORY
{
    return nullptr;
}
