#include "Vst3Entry.h"

#include "Export.h"

namespace zettestplugin {

namespace {

int entered = 0;

} // namespace

bool ModuleIsEntered() noexcept
{
    return entered > 0;
}

} // namespace zettestplugin

ZET_PLUGIN_EXPORT bool InitDll()
{
    ++zettestplugin::entered;
    return true;
}

ZET_PLUGIN_EXPORT bool ExitDll()
{
    --zettestplugin::entered;
    return true;
}
