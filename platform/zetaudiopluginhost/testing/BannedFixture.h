#pragma once

#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginhost {

/// A list of its own with a file in the test's preferences folder.
class BannedPluginManagerTest : public zettesting::HostFixture
{
  protected:
    BannedPluginManagerTest() { ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance()); }
    ~BannedPluginManagerTest() override
    {
        ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
    }

    zetcore::filesupport::File ListFile() const
    {
        return zetcore::filesupport::File(zettesting::ToWide(ListPath()));
    }
    std::filesystem::path ListPath() const { return prefs / "BannedAudioPlugins.xml"; }
    std::filesystem::path ReasonsPath() const { return prefs / "BannedAudioPlugins.xml.reasons"; }
    std::wstring ListPathText() const { return zettesting::ToWide(ListPath()); }

    std::vector<zetaudiofilterhost::PluginLocator> Banned() const
    {
        return {manager.BannedBegin(), manager.BannedEnd()};
    }

    BannedPluginManager manager;
    const zetaudiofilterhost::PluginLocator first{zetaudiofilterhost::TechnologyType::VST, L"/plugins/a.so"};
    const zetaudiofilterhost::PluginLocator second{zetaudiofilterhost::TechnologyType::VST3,
                                                   L"/plugins/b.vst3"};
    const zetaudiofilterhost::PluginLocator sub{zetaudiofilterhost::TechnologyType::VST, L"/plugins/shell.so",
                                                L"42"};
};

} // namespace zetaudiopluginhost
