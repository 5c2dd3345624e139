#include "module/PreferenceFiles.h"

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/filesupport/paths/Dir.h>

namespace zetaudiopluginhostui {

zetcore::filesupport::File InPrefDir(const std::wstring& name)
{
    return {zetcore::filesupport::Dir::PrefDir(), name};
}

zetcore::filesupport::File ConfigurationFile()
{
    return InPrefDir(zetaudiofilterhost::PluginModuleInfoManager::GetSettingsFileName());
}

} // namespace zetaudiopluginhostui
