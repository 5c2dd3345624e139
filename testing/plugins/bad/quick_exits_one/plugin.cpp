#include <cstdlib>

#include "Vst2Plugin.h"

/// Ends the process at once, without any of its exit functions.
ZET_VST2_ENTRY
{
    std::_Exit(1);
}
