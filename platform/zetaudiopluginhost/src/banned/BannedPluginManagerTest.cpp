#include <zetaudiopluginhost/BannedPluginManager.h>

#include <algorithm>
#include <set>
#include <thread>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BanReasons.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/TextOf.h>

#include "testing/BannedFixture.h"

namespace zetaudiopluginhost {
namespace {

using namespace testing;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfo;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetcore::filesupport::File;

TEST_F(BannedPluginManagerTest, TheFilesHaveTheNamesThatTheHostLooksFor)
{
    EXPECT_EQ(BannedPluginManager::GetSettingsFileName(), L"BannedAudioPlugins.xml");
    EXPECT_EQ(BannedPluginManager::GetPermanentBannedSettingsFileName(), L"UnsupportedAudioPlugins.xml");
}

TEST_F(BannedPluginManagerTest, AProgramThatOnlyLooksReadsBansAndLeavesADamagedFileWhereItIs)
{
    EXPECT_THAT(BannedPluginManager::BansInFile(ListFile()), IsEmpty());
    manager.AddBannedPlugin(first, "why");
    manager.SaveConfiguration(ListFile());
    const auto bans = BannedPluginManager::BansInFile(ListFile());
    EXPECT_THAT(bans, ElementsAre(Pair(first, *manager.GetBanInfo(first))));

    zettesting::WriteAll(ListPath(), "no list");
    EXPECT_THAT([this] { BannedPluginManager::BansInFile(ListFile()); },
                ThrowsMessage<std::runtime_error>(HasSubstr("BannedAudioPlugins.xml, line 1")));
    EXPECT_TRUE(ListFile().Exists());
}

TEST_F(BannedPluginManagerTest, BannedPluginsAreIteratedInOrderAndOnce)
{
    manager.AddBannedPlugin(second, "later");
    manager.AddBannedPlugin(first, "why");
    manager.AddBannedPlugin(first);
    manager.AddBannedPlugin(PluginLocator(), "an empty locator is no plug-in");
    EXPECT_THAT(Banned(), ElementsAre(first, second));
    EXPECT_EQ(manager.GetBanInfo(first)->reason, "why");
    EXPECT_GT(manager.GetBanInfo(first)->time, 1600000000);
    EXPECT_FALSE(manager.GetBanInfo(sub).has_value());

    manager.RemoveBannedPlugin(first);
    manager.RemoveBannedPlugin(sub);
    EXPECT_THAT(Banned(), ElementsAre(second));
}

TEST_F(BannedPluginManagerTest, TheFileTellsNothingOfTheOrderInWhichPluginsWereBanned)
{
    BanInfo info;
    info.reason = "crashed";
    info.time = 1'700'000'000;
    std::vector<PluginLocator> locators{first, second, sub};
    std::sort(locators.begin(), locators.end());
    std::set<std::string> texts;
    do {
        BannedPluginManager each;
        ListFile().Delete();
        for (const PluginLocator& locator : locators)
            each.AddBannedPlugin(locator, info);
        each.SaveConfiguration(ListFile());
        texts.insert(zettesting::ReadAll(prefs / "BannedAudioPlugins.xml"));
    } while (std::next_permutation(locators.begin(), locators.end()));
    EXPECT_THAT(texts, ElementsAre(HasSubstr("crashed")));
}

TEST_F(BannedPluginManagerTest, ALookAtTheFileChangesNeitherTheListNorTheFile)
{
    EXPECT_THAT(BannedPluginManager::PeekAtConfiguration(ListFile()), IsEmpty());
    manager.AddBannedPlugin(first, "why");
    manager.AddBannedPlugin(sub, "why");
    manager.SaveConfiguration(ListFile());
    manager.RemoveBannedPlugin(sub);
    EXPECT_THAT(BannedPluginManager::PeekAtConfiguration(ListFile()), UnorderedElementsAre(first, sub));
    EXPECT_THAT(Banned(), ElementsAre(first));

    zettesting::WriteAll(prefs / "BannedAudioPlugins.xml", "<bannedplugins");
    EXPECT_THAT(BannedPluginManager::PeekAtConfiguration(ListFile()), IsEmpty());
    EXPECT_EQ(zettesting::ReadAll(prefs / "BannedAudioPlugins.xml"), "<bannedplugins");
}

TEST_F(BannedPluginManagerTest, ABannedModuleBansItsSubPluginsAndNotTheOtherWayRound)
{
    manager.AddBannedPlugin(sub, "");
    EXPECT_TRUE(manager.IsBanned(sub));
    EXPECT_FALSE(manager.IsBanned(sub.ModuleLocator()));
    manager.AddBannedPlugin(first, "");
    EXPECT_TRUE(manager.IsBanned(PluginLocator(TechnologyType::VST, L"/plugins/a.so", L"7")));
}

TEST_F(BannedPluginManagerTest, TheRegistryLeavesBannedPluginsOutAtOnce)
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    registry.AddModule(std::make_shared<PluginModuleInfo>(first));
    const auto shown = [&registry] { return registry.PluginInfoEnd() - registry.PluginInfoBegin(); };
    ASSERT_EQ(shown(), 1);
    manager.AddBannedPlugin(first, "");
    EXPECT_EQ(shown(), 0);
    manager.RemoveBannedPlugin(first);
    EXPECT_EQ(shown(), 1);
    manager.AddBannedPlugin(first, "");
    ResetBannedPlugins(manager);
    EXPECT_EQ(shown(), 1);
}

TEST_F(BannedPluginManagerTest, TheListComesBackFromItsFile)
{
    const PluginLocator odd(TechnologyType::VST, L"/plugins/a|b \"<&>\n\u00E9.so", L"sub|1");
    manager.AddBannedPlugin(odd, "crashed: \"<&>\"\nlast line\t\x01 caf\xC3\xA9 \xFF");
    manager.AddBannedPlugin(first, "");
    manager.SaveConfiguration(ListFile());

    BannedPluginManager other;
    EXPECT_TRUE(other.LoadConfiguration(ListFile()));
    EXPECT_EQ(zettesting::TextOf(other.GetLoadError()), "");
    EXPECT_EQ(other.GetBanInfo(odd), manager.GetBanInfo(odd));
    EXPECT_EQ(other.GetBanInfo(odd)->reason, "crashed: \"<&>\"\nlast line   caf\xC3\xA9 \xEF\xBF\xBD");
    EXPECT_EQ(std::distance(other.BannedBegin(), other.BannedEnd()), 2);
}

TEST_F(BannedPluginManagerTest, AMissingFileIsAnEmptyList)
{
    manager.AddBannedPlugin(first, "");
    EXPECT_TRUE(manager.LoadConfiguration(ListFile()));
    EXPECT_THAT(Banned(), IsEmpty());
}

TEST_F(BannedPluginManagerTest, ADamagedFileIsNamedWithItsLineAndKeptAside)
{
    zetcore::debug::SetMasterTraceVolume(1);
    const std::string damaged = "<?xml version=\"1.0\"?>\n<bannedplugins>\n<plugin locator=\n";
    zettesting::WriteAll(ListPath(), damaged);
    manager.AddBannedPlugin(first, "");
    EXPECT_FALSE(manager.LoadConfiguration(ListFile()));
    EXPECT_THAT(Banned(), IsEmpty());
    EXPECT_THAT(zettesting::TextOf(manager.GetLoadError()), HasSubstr("BannedAudioPlugins.xml, line "));
    EXPECT_THAT(*traceLines, Contains(HasSubstr("BannedAudioPlugins.xml, line ")));
    EXPECT_FALSE(std::filesystem::exists(ListPath()));
    const auto kept = prefs / "BannedAudioPlugins.xml.damaged";
    EXPECT_EQ(zettesting::ReadAll(kept), damaged);
    EXPECT_THAT(zettesting::TextOf(manager.GetLoadError()), testing::EndsWith("; kept as " + kept.string()));

    zettesting::WriteAll(ListPath(), "<something/>");
    EXPECT_FALSE(manager.LoadConfiguration(ListFile()));
    EXPECT_THAT(zettesting::TextOf(manager.GetLoadError()), HasSubstr("<something>"));
}

TEST_F(BannedPluginManagerTest, WhatANewerVersionHasWrittenSurvivesASave)
{
    zettesting::WriteAll(ListPath(),
                         "<bannedplugins version=\"9.0\" mood=\"good\">\n"
                         "<!-- kept --><future a=\"1\"><b/></future>\n"
                         "<plugin locator=\"VST|/plugins/a.so|\" colour=\"red\"><note>hm</note></plugin>\n"
                         "<plugin locator=\"of a form to come\"/>\n"
                         "</bannedplugins>\n");
    ASSERT_TRUE(manager.LoadConfiguration(ListFile()));
    EXPECT_THAT(Banned(), ElementsAre(first));
    manager.AddBannedPlugin(second, "new");
    manager.SaveConfiguration(ListFile());
    const std::string saved = zettesting::ReadAll(ListPath());
    for (const char* kept : {"version=\"9.0\"", "mood=\"good\"", "<!-- kept -->", "<future a=\"1\">",
                             "colour=\"red\"", "<note>hm</note>", "of a form to come", "b.vst3"})
        EXPECT_THAT(saved, HasSubstr(kept));
}

TEST_F(BannedPluginManagerTest, AListThatCannotBeSavedSaysSo)
{
    EXPECT_THROW(manager.SaveConfiguration(File(zettesting::ToWide(prefs / "missing" / "list.xml"))),
                 zetcore::filesupport::file_exception);
}

TEST_F(BannedPluginManagerTest, TheReasonIsWhatTheScannerHasRecorded)
{
    RecordBanReason(ListPathText(), first, {"segmentation fault in phase load", 1700000000});
    manager.AddBannedPlugin(first);
    EXPECT_EQ(manager.GetBanInfo(first), (BanInfo{"segmentation fault in phase load", 1700000000}));
    manager.AddBannedPlugin(second);
    EXPECT_EQ(manager.GetBanInfo(second)->reason, "");
}

TEST_F(BannedPluginManagerTest, SavedReasonsAreTakenOutOfTheScannersFile)
{
    RecordBanReason(ListPathText(), first, {"one", 1});
    RecordBanReason(ListPathText(), second, {"two", 2});
    manager.AddBannedPlugin(first);
    manager.SaveConfiguration(ListFile());
    EXPECT_FALSE(FindBanReason(ListPathText(), first).has_value());
    EXPECT_EQ(FindBanReason(ListPathText(), second), (BanInfo{"two", 2}));
    manager.AddBannedPlugin(second);
    manager.SaveConfiguration(ListFile());
    EXPECT_FALSE(std::filesystem::exists(ReasonsPath()));
}

TEST_F(BannedPluginManagerTest, ReasonsAreReplacedAndBadOnesAreNothing)
{
    EXPECT_EQ(BanReasonsPath(L"/a/list.xml"), L"/a/list.xml.reasons");
    EXPECT_FALSE(FindBanReason(ListPathText(), first).has_value());
    RecordBanReason(ListPathText(), first, {"old", 1});
    RecordBanReason(ListPathText(), first, {"new", 2});
    EXPECT_EQ(FindBanReason(ListPathText(), first), (BanInfo{"new", 2}));

    zettesting::WriteAll(ReasonsPath(), "<banreasons><plugin");
    EXPECT_FALSE(FindBanReason(ListPathText(), first).has_value());
    RecordBanReason(ListPathText(), first, {"again", 3});
    EXPECT_EQ(FindBanReason(ListPathText(), first), (BanInfo{"again", 3}));
}

TEST_F(BannedPluginManagerTest, ThreadsMayBanAndSaveSideBySide)
{
    constexpr int each = 40;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([this, thread] {
            for (int i = 0; i < each; ++i) {
                const std::wstring name = std::to_wstring(thread) + L"-" + std::to_wstring(i);
                manager.AddBannedPlugin(PluginLocator(TechnologyType::VST, L"/plugins/" + name), "why");
                manager.SaveConfiguration(ListFile());
            }
        });
    }
    for (std::thread& thread : threads)
        thread.join();
    BannedPluginManager other;
    ASSERT_TRUE(other.LoadConfiguration(ListFile()));
    EXPECT_EQ(std::distance(other.BannedBegin(), other.BannedEnd()), 4 * each);
}

class UnsupportedListTest : public BannedPluginManagerTest
{
  protected:
    bool Load(const std::string& text)
    {
        zettesting::WriteAll(prefs / "UnsupportedAudioPlugins.xml", text);
        return manager.LoadStaticConfiguration(
            File(zettesting::ToWide(prefs / "UnsupportedAudioPlugins.xml")));
    }
};

TEST_F(UnsupportedListTest, AnAbsentAttributeMatchesAll)
{
    ASSERT_TRUE(Load("<?xml version=\"1.0\" ?>\r\n<pluginlist version=\"4.0.0\">\r\n"
                     "\t<plugin filename=\"Whole File.dll\"/>\r\n"
                     "\t<plugin filename=\"exact.dll\" uniqueid=\"3091950960\" version=\"2400\"/>\r\n"
                     "\t<plugin filename=\"id.dll\" uniqueid=\"7\"/>\r\n"
                     "\t<plugin filename=\"version.dll\" version=\"-3\"/>\r\n"
                     "</pluginlist>\r\n"));
    EXPECT_TRUE(manager.IsUnsupportedFile(L"whole file.DLL"));
    EXPECT_FALSE(manager.IsUnsupportedFile(L"Whole File"));
    EXPECT_FALSE(manager.IsUnsupportedFile(L"exact.dll"));
    struct
    {
        const wchar_t* file;
        std::uint32_t id;
        std::int64_t version;
        bool matches;
    } const cases[] = {{L"Whole File.dll", 1, 2, true},
                       {L"EXACT.dll", 3091950960u, 2400, true},
                       {L"exact.dll", 3091950960u, 2401, false},
                       {L"exact.dll", 3091950961u, 2400, false},
                       {L"id.dll", 7, 99, true},
                       {L"id.dll", 8, 99, false},
                       {L"version.dll", 1, -3, true},
                       {L"version.dll", 1, 3, false},
                       {L"other.dll", 7, 2400, false}};
    for (const auto& one : cases)
        EXPECT_EQ(manager.IsUnsupported(one.file, one.id, one.version), one.matches) << one.id;
}

TEST_F(UnsupportedListTest, AMissingOrMalformedFileIsFalseAndAnEmptyList)
{
    EXPECT_FALSE(manager.LoadStaticConfiguration(File(zettesting::ToWide(prefs / "none.xml"))));
    ASSERT_TRUE(Load("<pluginlist><plugin filename=\"a.so\"/></pluginlist>"));
    EXPECT_TRUE(manager.IsUnsupportedFile(L"a.so"));
    for (const char* bad : {"", "<pluginlist>", "<plugins/>", "plain text"}) {
        EXPECT_FALSE(Load(bad)) << bad;
        EXPECT_FALSE(manager.IsUnsupportedFile(L"a.so"));
    }
}

TEST_F(UnsupportedListTest, AnEntryThatCannotBeReadMatchesNothing)
{
    zetcore::debug::SetMasterTraceVolume(1);
    ASSERT_TRUE(
        Load("<pluginlist>\n<plugin/>\n<plugin filename=\"a.so\" uniqueid=\"seven\"/>\n"
             "<plugin filename=\"b.so\" uniqueid=\"4294967296\"/>\n"
             "<plugin filename=\"c.so\" version=\"1.0\"/>\n<plugin filename=\"d.so\"/>\n</pluginlist>"));
    EXPECT_FALSE(manager.IsUnsupported(L"a.so", 7, 0));
    EXPECT_FALSE(manager.IsUnsupported(L"b.so", 0, 0));
    EXPECT_FALSE(manager.IsUnsupported(L"c.so", 0, 1));
    EXPECT_TRUE(manager.IsUnsupportedFile(L"d.so"));
    EXPECT_EQ(traceLines->size(), 4u);
    EXPECT_THAT(*traceLines, Contains(HasSubstr("line 3")));
}

TEST_F(BannedPluginManagerTest, WhatAnotherProgramHasBannedOrLiftedMeanwhileIsTakenIn)
{
    manager.AddBannedPlugin(sub, "from the start");
    manager.SaveConfiguration(ListFile());
    BannedPluginManager other;
    ASSERT_TRUE(other.LoadConfiguration(ListFile()));
    other.AddBannedPlugin(second, "theirs");
    other.RemoveBannedPlugin(sub);
    other.SaveConfiguration(ListFile());
    manager.AddBannedPlugin(first, "ours");
    manager.SaveConfiguration(ListFile());
    EXPECT_THAT(Banned(), ElementsAre(first, second));
    EXPECT_EQ(manager.GetBanInfo(second)->reason, "theirs");

    BannedPluginManager third;
    ASSERT_TRUE(third.LoadConfiguration(ListFile()));
    EXPECT_EQ(std::vector<PluginLocator>(third.BannedBegin(), third.BannedEnd()), Banned());
}

TEST_F(BannedPluginManagerTest, ABanThatThisOneLiftedStaysLifted)
{
    manager.AddBannedPlugin(first, "why");
    manager.SaveConfiguration(ListFile());
    manager.RemoveBannedPlugin(first);
    manager.SaveConfiguration(ListFile());
    EXPECT_THAT(Banned(), IsEmpty());
    ASSERT_TRUE(manager.LoadConfiguration(ListFile()));
    EXPECT_THAT(Banned(), IsEmpty());
}

TEST_F(BannedPluginManagerTest, AListThatAnotherProgramDamagedIsKeptAside)
{
    manager.AddBannedPlugin(first, "why");
    manager.SaveConfiguration(ListFile());
    zettesting::WriteAll(ListPath(), "no list");
    manager.SaveConfiguration(ListFile());
    EXPECT_EQ(zettesting::ReadAll(ListPath().string() + ".damaged"), "no list");
    ASSERT_TRUE(manager.LoadConfiguration(ListFile()));
    EXPECT_THAT(Banned(), ElementsAre(first));
}

} // namespace
} // namespace zetaudiopluginhost
