#include <cstdlib>

#include "Vst2Plugin.h"

/// Ends the process at once with exit code 1, without calling exit functions.
ZET_VST2_ENTRY
{
    std::_Exit(1);
}
