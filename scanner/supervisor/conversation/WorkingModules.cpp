#include "supervisor/conversation/WorkingModules.h"

#include <exception>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/File.h>

#include "TraceCategory.h"

namespace zetaudiofilterscan {

using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BannedPluginManager;

std::vector<PluginLocator> WorkingModules(const std::wstring& registryPath,
                                          const std::vector<TechnologyType>& technologies)
{
    std::vector<PluginLocator> modules;
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    try {
        for (const auto& info :
             PluginModuleInfoManager::RecordsInFile(zetcore::filesupport::File(registryPath), technologies)) {
            if (info->GetStatus() != ModuleStatus::Working || banned.IsBanned(info->GetLocator()))
                continue;
            // The records are in order, so that those of one module follow each other.
            PluginLocator module = info->GetLocator().ModuleLocator();
            if (modules.empty() || modules.back() != module)
                modules.push_back(std::move(module));
        }
    } catch (const std::exception& error) {
        zetcore::debug::TraceLine(1, traceCategory, error.what());
    }
    return modules;
}

} // namespace zetaudiofilterscan
