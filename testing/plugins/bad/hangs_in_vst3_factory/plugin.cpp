#include "Hang.h"
#include "Vst3Plugin.h"

using namespace zettestplugin;

ZET_VST3_FACTORY
{
    Hang();
    return nullptr;
}
