// No callback is called while a lock is held, except where the session says so. The sinks and callbacks here
// use all that they can reach. If a lock were held meanwhile, one thread would take it twice and wait for
// ever, or two threads would take two locks in different orders, which the thread sanitizer reports.
#include <atomic>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/ClientName.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::debug::DebugDatabase;
using zetcore::filesupport::File;

class LockOrder : public ExternalScanFixture
{
  protected:
    LockOrder()
    {
        zetcore::debug::SetMasterTraceVolume(9);
        zetcore::debug::SetTraceSink([this](auto&&...) {
            thread_local bool inside = false;
            if (inside)
                return;
            inside = true;
            UseEverything();
            ++lines;
            inside = false;
        });
    }
    ~LockOrder() override
    {
        if (scan)
            scan->StopScan();
        scan.reset();
        zetcore::debug::SetTraceSink({});
    }

    /// Calls everything that any thread may call.
    void UseEverything() const
    {
        BannedPluginManager& list = *BannedPluginManager::GetInstance();
        list.IsBanned(a);
        list.GetBanInfo(a);
        list.IsUnsupportedFile(L"a.so");
        list.SaveConfiguration(File(zettesting::ToWide(prefs / "copy.xml")));
        zetaudiopluginhost::FindBanReason(banned, a);
        DebugDatabase::Instance().GetEntry("any", "");
        zetcore::config::Localizer::Get().Localize("$$$/Any=text");
        zetcore::utility::GetClientName();
        zetcore::filesupport::Dir::PrefDir();
        zetcore::threads::AsyncCallFromMainThread([] {}, 0);
        zetcore::debug::TraceLine(9, "LockOrder", "from inside");
    }

    const PluginLocator none{};
    const PluginLocator a = Plugin("a.so");
    const PluginLocator b = Plugin("b.so");
    std::atomic<int> lines = 0;
};

TEST_F(LockOrder, TheDebugDatabaseTracesWithoutItsLock)
{
    zettesting::WriteAll(prefs / "DebugDatabase.txt", "no equals sign\n");
    DebugDatabase::Instance().Reset();
    DebugDatabase::Instance().GetEntry("key", "");
    EXPECT_EQ(lines, 1);
}

TEST_F(LockOrder, TheReasonsOfBansAreTracedWithoutTheirLock)
{
    zettesting::WriteAll(zetaudiopluginhost::BanReasonsPath(banned), "no list");
    zetaudiopluginhost::FindBanReason(banned, a);
    EXPECT_EQ(lines, 1);
}

TEST_F(LockOrder, AScanInWhichMuchGoesWrongCallsNobodyUnderALockOfItsLibraries)
{
    Script(1, {"listen-raw", "ok", "ok", "reply []"});
    Script(2, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    Script(3, {"listen-raw", "ok", "twice {}", "bytes garbage\\r\\n\\r\\n"});
    Script(4, {"listen", "ok", "ok", Info(b, 0, 1, true), Result(b, L"Delay"), Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(Launches(), 4);
    EXPECT_TRUE(BannedPluginManager::GetInstance()->IsBanned(a));
    EXPECT_GT(lines, 20);
}

TEST_F(LockOrder, BansAndSavesOfTwoThreadsAndTheRegistryTakeTheirLocksInOneOrder)
{
    std::vector<PluginLocator> plugins;
    for (int number = 1; number <= 4; ++number) {
        plugins.push_back(Plugin(std::to_string(number) + ".so"));
        Script(number, {"listen", "ok", "ok", Info(plugins.back(), 0, 4, true), "die"});
    }
    ASSERT_TRUE(Start(plugins));
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    RunUntil([&] {
        UseEverything();
        BannedPluginManager::GetInstance()->AddBannedPlugin(b, "by the user");
        std::vector<PluginLocator> vanished;
        registry.CollectPotentialPlugins(true, vanished);
        registry.PluginInfoBegin();
        BannedPluginManager::GetInstance()->RemoveBannedPlugin(b);
        return EndReports() > 0;
    });
    for (const PluginLocator& plugin : plugins)
        EXPECT_TRUE(BannedPluginManager::GetInstance()->IsBanned(plugin));
}

TEST_F(LockOrder, TheCallbackOfTheEndMayUseAllButTheSession)
{
    bool ended = false;
    Script(1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(scan->StartScan(Settings(), banned, banned, {a}, false, false,
                                [&](const PluginLocator&, const std::string&, int progress, int total) {
                                    UseEverything();
                                    BannedPluginManager::GetInstance()->AddBannedPlugin(b, "at the end");
                                    ended = progress == 1 && total == 0;
                                }));
    RunUntil([&] { return ended; });
}

} // namespace
} // namespace zetaudiopluginhostui
