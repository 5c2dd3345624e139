#include <zetaudiofilterhost/PluginModuleInfo.h>

namespace zetaudiofilterhost {

PluginModuleInfo::PluginModuleInfo(PluginLocator moduleLocator) : locator(std::move(moduleLocator)) {}

} // namespace zetaudiofilterhost
