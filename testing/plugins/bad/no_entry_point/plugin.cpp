#include "Export.h"

/// A library that loads and is no plug-in.
ZET_PLUGIN_EXPORT int AddNumbers(int a, int b)
{
    return a + b;
}
