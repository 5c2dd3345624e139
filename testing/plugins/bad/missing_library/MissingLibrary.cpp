#include "Export.h"

/// In a library that is built where no system looks for libraries.
ZET_PLUGIN_EXPORT int WhatTheMissingLibrarySays()
{
    return 1;
}
