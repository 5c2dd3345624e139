#include <algorithm>
#include <chrono>

#include <gmock/gmock.h>

#include <zetcore/utility/Backoff.h>
#include <zettesting/Emulation.h>
#include <zettesting/Patience.h>

#include "ManagerFixture.h"

namespace {

using testing::HasSubstr;
using testing::Not;
using Strings = std::vector<std::string>;
using zettesting::ChildProcess;

/// A host that loads plug-ins into its own process, crashes, and is started again.
class Recovery : public ManagerFixture
{
  protected:
    std::filesystem::path Marker() const { return prefs / "ScannedPluginPath.txt"; }

    /// Installs plug-ins that are scanned before and after the bad one.
    void InstallGoodOnesAround()
    {
        before = {Install("good/vst2_effect", "a_effect").string(),
                  Install("good/vst2_shell", "b_shell").string(),
                  Install("good/vst3_without_moduleinfo", "c_vst3").string()};
        after = {Install("good/vst2_synth", "y_synth").string(),
                 Install("good/vst3_several_classes", "z_classes").string()};
    }

    void ExpectTheNextStartsToRecoverFrom(const std::filesystem::path& bad)
    {
        ASSERT_TRUE(std::filesystem::exists(Marker())) << "the scan has not ended of itself";

        const auto second = Run({"list", "--json"});
        EXPECT_EQ(second.exitStatus, 0) << second.error;
        EXPECT_THAT(second.error, HasSubstr("An error occurred when scanning the plug-in '" + bad.string() +
                                            "' that caused Sondrel to shut down."));
        EXPECT_FALSE(std::filesystem::exists(Marker()));
        Strings working, banned;
        for (const ListedPlugin& plugin : ReadList(second.output))
            (plugin.IsBanned() ? banned : working).push_back(plugin.path);
        working.erase(std::unique(working.begin(), working.end()), working.end());
        EXPECT_THAT(working, testing::UnorderedElementsAreArray(before))
            << "what was found before the crash, and nothing else";
        EXPECT_EQ(banned, Strings{bad.string()});

        const auto third = Run({"list", "--json"});
        EXPECT_EQ(third.exitStatus, 0);
        EXPECT_EQ(third.error, "");
        EXPECT_EQ(third.output, second.output);

        const ScanSummary rest = Scan({"--in-process"});
        EXPECT_EQ(rest.exitStatus, 0) << rest.messages;
        EXPECT_EQ(rest.scanned, static_cast<long long>(after.size())) << "the banned one is left out";
        EXPECT_THAT(ListedPaths({"--enabled"}), testing::IsSupersetOf(after));
        EXPECT_TRUE(FindListed(bad)->IsBanned());
        EXPECT_FALSE(std::filesystem::exists(Marker()));
    }

    Strings before, after;
};

Strings DeadlyPlugins()
{
    Strings names = {
        "crash_in_entry", "crash_when_asked_name", "crash_on_close",  "crash_vst3_factory",    "aborts",
        "exits_zero",     "quick_exits_one",       "overflows_stack", "installs_crash_handler"};
    // Wine's loader catches crashes in a module's initialisers and last functions.
    if (!zettesting::IsWine())
        names.insert(names.end(), {"crash_on_load", "crash_on_unload"});
    return names;
}

class RecoveryFrom : public Recovery, public testing::WithParamInterface<std::string>
{};

INSTANTIATE_TEST_SUITE_P(Each, RecoveryFrom, testing::ValuesIn(DeadlyPlugins()),
                         [](const auto& test) { return test.param; });

TEST_P(RecoveryFrom, TheSecondStartBansWhatCrashedTheFirstAndTheThirdFindsNothing)
{
    InstallGoodOnesAround();
    const auto bad = Install("bad/" + GetParam(), "m_bad");
    const auto first = Run({"scan", "--json", "--in-process"});
    EXPECT_FALSE(first.timedOut);
    EXPECT_EQ(first.output, "") << "the host is gone before it can report";
    ExpectTheNextStartsToRecoverFrom(bad);
}

TEST_F(Recovery, AHostThatIsKilledWhileAPluginHangsRecoversToo)
{
    InstallGoodOnesAround();
    const auto bad = Install("bad/loops_forever", "m_bad");
    ChildProcess scan(Command({"scan", "--json", "--in-process"}));
    ASSERT_TRUE(scan.WaitForError(bad.string()));
    // First the marker names the plug-in, then the registry is saved, then the plug-in is loaded.
    const auto journal = prefs / "AudioPlugins.xml.journal";
    ASSERT_TRUE(zettesting::Becomes([&] {
        return std::filesystem::exists(journal) &&
               zettesting::ReadAll(journal).find(before.back()) != std::string::npos;
    }));
    scan.Kill();
    scan.Wait();
    ExpectTheNextStartsToRecoverFrom(bad);
}

TEST_F(Recovery, EveryCommandChecksFirst)
{
    const auto bad = Install("bad/crash_in_entry", "bad");
    const auto good = Install("good/vst2_effect", "good");
    RunWell({"ban", bad.string()});
    RunWell({"scan"});
    const std::string locator = "VST|" + bad.string() + "|";
    for (const Strings& arguments :
         {Strings{"list"}, Strings{"scan"}, Strings{"folders", "list"}, Strings{"enable", good.string()},
          Strings{"disable", "--all"}, Strings{"ban", good.string()}, Strings{"reload", good.string()}}) {
        zettesting::WriteAll(Marker(), locator);
        const auto result = Run(arguments);
        EXPECT_EQ(result.exitStatus, 0) << testing::PrintToString(arguments) << result.error;
        EXPECT_THAT(result.error, HasSubstr(bad.string())) << testing::PrintToString(arguments);
        EXPECT_THAT(result.output, Not(HasSubstr("An error occurred")));
        EXPECT_FALSE(std::filesystem::exists(Marker())) << testing::PrintToString(arguments);
    }
}

TEST_F(Recovery, TheUnsupportedListIsWrittenByteForByte)
{
    const std::string text = zettesting::ReadAll(prefs / "UnsupportedAudioPlugins.xml");
    EXPECT_THAT(text,
                testing::StartsWith("<?xml version=\"1.0\" ?>\r\n<pluginlist version=\"4.0.0\">\r\n\t"));
    EXPECT_EQ(text, zettesting::ReadAll(ZET_UNSUPPORTED_LIST));
}

} // namespace
