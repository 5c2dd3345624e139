#include "Export.h"

/// A library like any other: it loads, and is no plug-in.
ZET_PLUGIN_EXPORT int AddNumbers(int a, int b)
{
    return a + b;
}
