// In builds with assertions, another thread than the main one ends the program where it calls an operation
// that is for the main thread.
#ifndef NDEBUG

#include <memory>
#include <thread>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>
#include <zetui/application/Application.h>
#include <zetui/dialogs/messagebox.h>

namespace zetaudiopluginhostui {
namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;

class MainThreadRuleDeathTest : public zettesting::HostFixture
{
  protected:
    MainThreadRuleDeathTest()
    {
        ::testing::FLAGS_gtest_death_test_style = "threadsafe";
        zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    }

    template<typename Call>
    static void OnAnotherThread(Call call)
    {
        std::thread(call).join();
    }

    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
};

TEST_F(MainThreadRuleDeathTest, TheModulesOperationsAreForTheMainThread)
{
    EXPECT_DEATH(OnAnotherThread([] { Initialize(); }), "Initialize was called on another thread");
    EXPECT_DEATH(OnAnotherThread([] { AudioPluginManager::IsVST2ShellSkippingFeatureEnabled(); }),
                 "IsVST2ShellSkippingFeatureEnabled was called on another thread");
    EXPECT_DEATH(OnAnotherThread([] { AudioPluginScan::GetLastEnd(); }),
                 "GetLastEnd was called on another thread");
}

TEST_F(MainThreadRuleDeathTest, TheRegistrysOperationsAreForTheMainThread)
{
    EXPECT_DEATH(OnAnotherThread([this] { registry.PluginInfoBegin(); }),
                 "PluginInfoBegin was called on another thread");
    EXPECT_DEATH(OnAnotherThread([this] { ResetRegistry(registry); }), "Reset was called on another thread");
    EXPECT_DEATH(OnAnotherThread([] { BannedPluginManager::GetInstance()->BannedBegin(); }),
                 "BannedBegin was called on another thread");
}

TEST_F(MainThreadRuleDeathTest, TheToolkitsOperationsAreForTheMainThread)
{
    EXPECT_DEATH(OnAnotherThread([] { zetui::ui::HaveWindows(); }),
                 "HaveWindows was called on another thread");
    EXPECT_DEATH(OnAnotherThread([] { zetui::dialogs::messagebox::ShowNote(nullptr, L"", L"", {}); }),
                 "ShowNote was called on another thread");
}

TEST_F(MainThreadRuleDeathTest, OthersAreForAnyThread)
{
    OnAnotherThread([this] {
        registry.GetRecordChanges();
        BannedPluginManager::GetInstance()->IsBanned(zetaudiofilterhost::PluginLocator());
    });
}

} // namespace
} // namespace zetaudiopluginhostui

#endif
