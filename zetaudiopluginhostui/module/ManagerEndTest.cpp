#include "module/ManagerEnd.h"

#include <memory>
#include <stdexcept>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginhostui {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;

class ManagerEndTest : public zettesting::HostFixture
{
  protected:
    ManagerEndTest()
    {
        ResetRegistry(registry);
        registry.AddModule(std::make_shared<PluginModuleInfo>(plugin));
        preferences.SaveRegistry();
        copy = registry.MakeCopy();
    }
    ~ManagerEndTest() override { ResetRegistry(registry); }

    bool IsEnabled() const { return registry.Find(plugin) && registry.Find(plugin)->IsEnabled(); }

    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    Preferences preferences{nullptr, nullptr};
    const PluginLocator plugin{TechnologyType::VST, L"/plugins/one.so"};
    std::shared_ptr<const PluginModuleInfoManager::Copy> copy;
};

TEST_F(ManagerEndTest, EveryResponseButOkTakesBackAndIsToldToNobody)
{
    int changes = 0;
    const zetcore::events::ScopedConnection connection =
        registry.GetPluginInfosChangedSignal().Connect([&] { ++changes; });
    for (const int response : {-1, 0, 2, 3, 1000}) {
        registry.Find(plugin)->SetEnabled(false);
        EXPECT_FALSE(EndManagerRun(response, *copy, preferences)) << response;
        EXPECT_FALSE(preferences.HasFailed()) << response;
        EXPECT_TRUE(IsEnabled()) << response;
    }
    EXPECT_EQ(changes, 0);
    registry.Find(plugin)->SetEnabled(false);
    EXPECT_TRUE(EndManagerRun(1, *copy, preferences));
    EXPECT_FALSE(IsEnabled());
    EXPECT_EQ(changes, 1);
}

TEST_F(ManagerEndTest, AnExceptionOnItsWayTakesTheChangesBackAndNoOtherReplacesIt)
{
    registry.Find(plugin)->SetEnabled(false);
    TakeBackManagerRun(*copy, preferences);
    EXPECT_TRUE(IsEnabled());
    const auto vst = registry.GetPluginTechnology(TechnologyType::VST);
    vst->AddPluginDirectories({L"/added/by/the/user"});
    const zetcore::events::ScopedConnection connection = vst->GetDirectoriesChangedSignal().Connect(
        [](const auto&) { throw std::range_error("of the host"); });
    EXPECT_NO_THROW(TakeBackManagerRun(*copy, preferences));
}

TEST_F(ManagerEndTest, AFileThatAnotherProgramHasTakenAwayLeavesTheDefaultFolders)
{
    Preferences::RegistryFile().Delete();
    EndManagerRun(0, *copy, preferences);
    EXPECT_FALSE(preferences.HasFailed());
    EXPECT_EQ(registry.RecordCount(), 0u) << "the registry equals what is on the disk";
}

} // namespace
} // namespace zetaudiopluginhostui
