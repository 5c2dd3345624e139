#include <stdexcept>

#include "Vst2Plugin.h"

ZET_VST2_ENTRY
{
    throw std::runtime_error("the plug-in gave up");
}
