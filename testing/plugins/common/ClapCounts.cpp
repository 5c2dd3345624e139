#include "ClapCounts.h"

#include "Export.h"

namespace zettestplugin {

ClapCounts& Counts() noexcept
{
    static ClapCounts counts;
    return counts;
}

} // namespace zettestplugin

ZET_PLUGIN_EXPORT int CountEntered()
{
    return zettestplugin::Counts().entered;
}

ZET_PLUGIN_EXPORT int CountInstances()
{
    return zettestplugin::Counts().instances;
}
