#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/PluginModuleScanner.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/filesupport/paths/File.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>

namespace zetaudiopluginhost {

/// The engine on plug-ins of which most are made up; registry and banned list are empty before and after.
class PluginModuleScannerFixture : public zettesting::HostFixture
{
  protected:
    PluginModuleScannerFixture() { Reset(); }
    ~PluginModuleScannerFixture() override { Reset(); }

    static void Reset()
    {
        ResetBannedPlugins(*BannedPluginManager::GetInstance());
        ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
    }
    static zetaudiofilterhost::PluginLocator Vst2(const char* plugin)
    {
        return zetaudiofilterhost::PluginLocator(zetaudiofilterhost::TechnologyType::VST,
                                                 zettesting::ToWide(zettesting::TestPlugin(plugin)));
    }
    static std::shared_ptr<zetaudiofilterhost::PluginModuleInfo>
    Info(const zetaudiofilterhost::PluginLocator& locator)
    {
        auto info = std::make_shared<zetaudiofilterhost::PluginModuleInfo>(locator);
        info->SetName(L"scanned");
        info->SetUniqueId(L"7");
        info->SetNumericVersion(2400);
        return info;
    }
    /// Scans all there is; the locators in the order in which they were reported.
    static std::vector<zetaudiofilterhost::PluginLocator> RunAll(PluginModuleScanner& scanner)
    {
        std::vector<zetaudiofilterhost::PluginLocator> reported;
        zetaudiofilterhost::PluginLocator locator;
        std::string status;
        int progress = 0, total = 0;
        while (scanner.GetCurrentProgressInfo(locator, status, progress, total)) {
            EXPECT_EQ(progress, static_cast<int>(reported.size()));
            reported.push_back(locator);
            if (!scanner.ContinueScan())
                break;
        }
        return reported;
    }
    void Unsupported(const std::string& entries)
    {
        zettesting::WriteAll(prefs / "list.xml", "<pluginlist>" + entries + "</pluginlist>");
        ASSERT_TRUE(BannedPluginManager::GetInstance()->LoadStaticConfiguration(
            zetcore::filesupport::File(zettesting::ToWide(prefs / "list.xml"))));
    }
    PluginModuleScanner::EntityScan Recording()
    {
        return [this](const zetaudiofilterhost::PluginLocator& locator) {
            scanned.push_back(locator);
            ScanOutcome outcome;
            outcome.infos.push_back(Info(locator));
            return outcome;
        };
    }

    zetaudiofilterhost::PluginModuleInfoManager& registry =
        *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    std::vector<zetaudiofilterhost::PluginLocator> scanned;
    const zetaudiofilterhost::PluginLocator first{zetaudiofilterhost::TechnologyType::VST, L"/plugins/a.so"};
    const zetaudiofilterhost::PluginLocator second{zetaudiofilterhost::TechnologyType::VST, L"/plugins/b.so"};
    const zetaudiofilterhost::PluginLocator third{zetaudiofilterhost::TechnologyType::VST, L"/plugins/c.so",
                                                  L"42"};
};

} // namespace zetaudiopluginhost
