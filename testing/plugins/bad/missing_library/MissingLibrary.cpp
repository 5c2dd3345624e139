#include "Export.h"

/// This library is built in a folder in which no system looks for libraries.
ZET_PLUGIN_EXPORT int WhatTheMissingLibrarySays()
{
    return 1;
}
