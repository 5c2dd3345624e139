#include "supervisor/conversation/WorkingModules.h"

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/debug/Trace.h>
#include <zettesting/HostFixture.h>

namespace zetaudiofilterscan {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zetaudiofilterhost::ModuleStatus;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BannedPluginManager;

std::shared_ptr<PluginModuleInfo> Record(const PluginLocator& locator,
                                         ModuleStatus status = ModuleStatus::Working)
{
    auto info = std::make_shared<PluginModuleInfo>(locator);
    info->SetName(L"<module locator=\"VST3|/no.vst3|\" status=\"working\"");
    info->SetStatus(status);
    return info;
}

class WorkingModulesTest : public zettesting::HostFixture
{
  protected:
    ~WorkingModulesTest() override { ResetBannedPlugins(*BannedPluginManager::GetInstance()); }

    std::vector<PluginLocator> Vst3Modules() const
    {
        return WorkingModules(zettesting::ToWide(path), {TechnologyType::VST3});
    }

    const std::filesystem::path path = prefs / "plugins.xml";
    const PluginLocator plain{TechnologyType::VST3, L"/plain.vst3"};
    const PluginLocator odd{TechnologyType::VST3, L"/o\"d'd <&> | % \n\t\xDC81\x00E9.vst3"};
};

TEST_F(WorkingModulesTest, FindsTheWorkingVst3ModulesThatTheRegistryWrote)
{
    zettesting::WriteAll(path,
                         PluginModuleInfoManager::ToConfigurationText(
                             {Record({TechnologyType::VST, L"/a.so"}), Record(plain),
                              Record({TechnologyType::VST3, L"/failed.vst3"}, ModuleStatus::Failed),
                              Record({TechnologyType::VST3, L"/unscanned.vst3"}, ModuleStatus::Unscanned),
                              Record({TechnologyType::VST3, odd.GetPath(), L"one"}),
                              Record({TechnologyType::VST3, odd.GetPath(), L"two"})}));
    EXPECT_THAT(Vst3Modules(), ElementsAre(odd, plain));
}

TEST_F(WorkingModulesTest, LeavesOutWhatIsBanned)
{
    const PluginLocator part(TechnologyType::VST3, odd.GetPath(), L"one");
    zettesting::WriteAll(
        path, PluginModuleInfoManager::ToConfigurationText(
                  {Record(plain), Record(part), Record({TechnologyType::VST3, odd.GetPath(), L"two"})}));
    BannedPluginManager::GetInstance()->AddBannedPlugin(plain, "for a test");
    BannedPluginManager::GetInstance()->AddBannedPlugin(part, "for a test");
    EXPECT_THAT(Vst3Modules(), ElementsAre(odd));
    BannedPluginManager::GetInstance()->AddBannedPlugin(odd, "for a test");
    EXPECT_THAT(Vst3Modules(), IsEmpty());
}

TEST_F(WorkingModulesTest, FindsNothingInWhatIsNoRegistryAndSaysSo)
{
    zetcore::debug::SetMasterTraceVolume(1);
    for (const char* text :
         {"", "<module", "<module locator=\"VST3|", "<module locator=\"VST3|&#xFFFFFFFFF;|\"",
          "<module locator=\"VST3|&;&x;|\"", "nonsense",
          "<audioplugins version=\"1.1\"><module locator=\"VST3|/a.vst3|\"/></audioplugin>"}) {
        zettesting::WriteAll(path, text);
        traceLines->clear();
        EXPECT_THAT(Vst3Modules(), IsEmpty()) << text;
        EXPECT_THAT(*traceLines, ElementsAre(HasSubstr("plugins.xml, line 1"))) << text;
        EXPECT_EQ(zettesting::ReadAll(path), text);
    }
}

TEST_F(WorkingModulesTest, TakesAMissingFileForAnEmptyOne)
{
    EXPECT_THAT(Vst3Modules(), IsEmpty());
    EXPECT_THAT(*traceLines, IsEmpty());
}

} // namespace
} // namespace zetaudiofilterscan
