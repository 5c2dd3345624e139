#include "scan/ScanNote.h"

#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>
#include <zetui/dialogs/ProgressPresentation.h>
#include <zetui/dialogs/messagebox.h>

#include "session/HostSession.h"

namespace zetaudiopluginmanager {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhostui::AudioPluginScan;
using zetaudiopluginhostui::ScanEnd;
namespace messagebox = zetui::dialogs::messagebox;

ChangedPlugin Plugin(const std::wstring& name, const std::string& reason = {})
{
    return {PluginLocator(TechnologyType::VST, L"/" + name), name, reason};
}

TEST(ScanNote, SaysNothingWhenAllWentWell)
{
    ScanWatch::Result result;
    EXPECT_EQ(FormatScanNote(result), "");
    result.changes.added = {Plugin(L"a"), Plugin(L"b")};
    result.changes.restored = {Plugin(L"b")};
    result.changes.updated = {Plugin(L"c")};
    EXPECT_EQ(FormatScanNote(result), "");
    result.end.how = ScanEnd::How::Cancelled;
    EXPECT_EQ(FormatScanNote(result), "") << "everything had been reached";
}

TEST(ScanNote, SaysHowManyOfEachAndWhichDoNotWork)
{
    ScanWatch::Result result;
    result.changes.added = {Plugin(L"a"), Plugin(L"b"), Plugin(L"c")};
    result.changes.restored = {Plugin(L"b")};
    result.changes.updated = {Plugin(L"u")};
    result.changes.removed = {Plugin(L"Gone One")};
    result.changes.banned = {Plugin(L"Bad\nOne", "crashed\nlast words"), Plugin(L"Other")};
    result.changes.unreadable = {Plugin(L"locked.so", "Permission denied")};
    EXPECT_EQ(FormatScanNote(result), "Plug-ins after the scan:\n"
                                      "\n"
                                      "New: 2\n"
                                      "Working again: 1\n"
                                      "Updated: 1\n"
                                      "\n"
                                      "No longer there: 1\n"
                                      "\u2022 Gone One\n"
                                      "\n"
                                      "Not working: 2\n"
                                      "\u2022 Bad One: crashed\n"
                                      "\u2022 Other\n"
                                      "\u201CReload\u201D in the list tries a plug-in again.\n"
                                      "\n"
                                      "Could not be read: 1\n"
                                      "\u2022 locked.so: Permission denied\n"
                                      "The next scan tries to read them again.");
}

TEST(ScanNote, PluginsOfOneNameAreToldApartByTheirFiles)
{
    ScanWatch::Result result;
    const auto named = [](const std::wstring& path, const std::wstring& name) {
        return ChangedPlugin{PluginLocator(TechnologyType::VST, path), name, {}};
    };
    result.changes.removed = {named(L"/p/delay.so", L"Delay"), named(L"/p/delay.vst3", L"Delay"),
                              named(L"/p/gate.so", L"Gate")};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("\n\u2022 delay.so\n\u2022 delay.vst3\n\u2022 Gate"));
}

TEST(ScanNote, EachThingThatDidNotGoWellIsTold)
{
    const std::pair<const char*, std::vector<ChangedPlugin> ScanChanges::*> things[] = {
        {"No longer there: 1", &ScanChanges::removed},
        {"Not working: 1", &ScanChanges::banned},
        {"Could not be read: 1", &ScanChanges::unreadable},
        {"Plug-ins not scanned: 1", &ScanChanges::unreached}};
    for (const auto& [text, thing] : things) {
        ScanWatch::Result result;
        (result.changes.*thing).push_back(Plugin(L"one"));
        EXPECT_THAT(FormatScanNote(result), HasSubstr(text));
    }
    for (const ScanEnd::How how : {ScanEnd::How::NotStarted, ScanEnd::How::GaveUp}) {
        ScanWatch::Result result;
        result.end = {how, "line one\nline two"};
        EXPECT_THAT(FormatScanNote(result), testing::EndsWith(".\nline one\nline two"));
    }
}

TEST(ScanNote, SaysWhyPluginsWereNotReachedAndThatTheyStay)
{
    ScanWatch::Result result;
    result.changes.added = {Plugin(L"a")};
    result.changes.unreached = {Plugin(L"x", "no scanner"), Plugin(L"y", "no scanner")};
    result.end = {ScanEnd::How::NotStarted, "no scanner"};
    EXPECT_EQ(FormatScanNote(result), "Plug-ins after the scan:\n"
                                      "\n"
                                      "New: 1\n"
                                      "\n"
                                      "The scanner program could not be started.\n"
                                      "no scanner\n"
                                      "Plug-ins not scanned: 2\n"
                                      "What was not scanned stays in the list as it was.");
    result.end = {ScanEnd::How::Done, {}};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("Plug-ins not scanned: 2\n\u2022 x: no scanner\n"))
        << "each has its own reason";
    result.end = {ScanEnd::How::Cancelled, {}};
    EXPECT_THAT(FormatScanNote(result), HasSubstr("The scan was cancelled.\nPlug-ins not scanned: 2\n"));
}

std::vector<ChangedPlugin> Several(int count)
{
    std::vector<ChangedPlugin> plugins;
    for (int number = 1; number <= count; ++number)
        plugins.push_back(
            Plugin(L"p" + std::to_wstring(number) + std::wstring(200, L'n'), std::string(500, 'x')));
    return plugins;
}

TEST(ScanNote, LongListsNamesAndReasonsAreCutAndSaySo)
{
    ScanWatch::Result result;
    result.changes.removed = Several(9);
    const std::string item = std::string(57, 'n') + "\u2026: " + std::string(59, 'x') + "\u2026";
    EXPECT_THAT(FormatScanNote(result), testing::EndsWith("\n\u2022 p9" + item));
    result.changes.removed = Several(10);
    EXPECT_THAT(FormatScanNote(result), testing::EndsWith("\u2022 p8" + item + "\n\u2022 and 2 more"));
    EXPECT_THAT(FormatScanNote(result),
                testing::StartsWith("Plug-ins after the scan:\n\nNo longer there: 10\n"));
    ScanWatch::Result folder;
    folder.changes.unreadable = {{{TechnologyType::None, L"/x"}, std::wstring(99, L'x') + L"/end", "why"}};
    EXPECT_THAT(FormatScanNote(folder), HasSubstr("x/end: why\n")) << "a path tells most at its end";
}

TEST(ScanNote, SeveralListsShareTheRoomOfASmallScreen)
{
    std::vector<ChangedPlugin> ScanChanges::*const lists[] = {
        &ScanChanges::removed, &ScanChanges::banned, &ScanChanges::unreadable, &ScanChanges::unreached};
    constexpr std::ptrdiff_t mostItems[] = {9, 12, 12, 12};
    ScanWatch::Result result;
    result.changes.added = result.changes.restored = result.changes.updated = Several(3);
    for (std::size_t index = 0; index < std::size(lists); ++index) {
        result.changes.*lists[index] = Several(100);
        const std::string text = FormatScanNote(result);
        std::ptrdiff_t items = 0;
        for (std::size_t at = text.find("\u2022"); at != std::string::npos; at = text.find("\u2022", at + 1))
            ++items;
        EXPECT_LE(items, mostItems[index]) << text;
        EXPECT_LE(std::count(text.begin(), text.end(), '\n') + items, 40) << "lines, two for each item";
    }
}

/// Stands for the host's windows: it writes their questions down and answers them.
class ScanNoteShown : public zettesting::HostFixture
{
  protected:
    ScanNoteShown()
    {
        ForgetAll();
        zetcore::threads::RegisterMainThread(loop);
        zetui::dialogs::SetPresentation(std::make_shared<Answers>(*this));
    }
    ~ScanNoteShown() override
    {
        zetui::dialogs::SetPresentation(nullptr);
        zetcore::threads::RegisterMainThread(nullptr);
        ForgetAll();
    }

    static void ForgetAll()
    {
        zetaudiofilterhost::PluginModuleInfoManager::GetInstance()->Reset();
        zetaudiopluginhost::BannedPluginManager::GetInstance()->Reset();
    }

    class Progress : public zetui::dialogs::ProgressPresentation
    {
      public:
        void Show(const std::string&, const std::string&, bool) override {}
        void SetExtraText(const std::string&) override {}
        void SetProgress(unsigned long long, unsigned long long, const std::string&) override {}
        void Hide() override {}
        bool ProcessEvents(bool wait) override
        {
            if (wait)
                if (const auto waiting = std::dynamic_pointer_cast<zetcore::threads::PlainEventLoop>(
                        zetcore::threads::GetRegisteredMainThread()))
                    waiting->WaitAndRun(std::chrono::steady_clock::now() + std::chrono::milliseconds(50));
            return false;
        }
    };
    class Answers : public zetui::dialogs::Presentation
    {
      public:
        explicit Answers(ScanNoteShown& fixture) : owner(fixture) {}
        std::unique_ptr<zetui::dialogs::ProgressPresentation>
        CreateProgress(zetui::ui::WindowVariant) override
        {
            return std::make_unique<Progress>();
        }
        void ShowAlert(zetui::dialogs::AlertKind, const std::string&, const std::string& message,
                       zetui::ui::WindowVariant) override
        {
            owner.alerts.push_back(message);
        }
        int Ask(const zetui::dialogs::Question& question, zetui::ui::WindowVariant) override
        {
            owner.questions.push_back(question);
            if (owner.onAsk)
                owner.onAsk();
            return (question.buttonSet & messagebox::kYesNo) ? owner.answer : question.defaultButton;
        }

      private:
        ScanNoteShown& owner;
    };

    /// Acts like a host's session, but without its windows.
    class Watched
    {
      public:
        explicit Watched(ScanNoteShown& fixture)
            : watch(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance(),
                    *zetaudiopluginhost::BannedPluginManager::GetInstance(),
                    {[&fixture] { ++fixture.registrySaves; }, [&fixture] { ++fixture.banSaves; },
                     [this](const ScanWatch::Result& result) { teller.Tell(result); }})
        {}

      private:
        ScanNoteTeller teller;

      public:
        ScanWatch watch;
    };

    PluginLocator Install(const std::string& plugin, const std::string& title) const
    {
        return {TechnologyType::VST,
                zettesting::ToWide(zettesting::CopyTestPlugin(plugin, folder.Path(), title))};
    }
    static void Scan(const std::vector<PluginLocator>& plugins)
    {
        std::make_shared<AudioPluginScan>(nullptr)->ScanForPlugins(nullptr, plugins, false, true, true);
    }
    /// There is none there.
    void TakeScannerAway() const
    {
        zetcore::filesupport::commondirs::SetExecutableDir(zettesting::ToWide(folder.Path()));
    }
    void GiveScannerBack() const { zetcore::filesupport::commondirs::SetExecutableDir(programs); }

    const std::wstring programs = zetcore::filesupport::commondirs::ExecutableDir().FullPath();
    std::shared_ptr<zetcore::threads::PlainEventLoop> loop =
        std::make_shared<zetcore::threads::PlainEventLoop>();
    std::vector<zetui::dialogs::Question> questions;
    std::vector<std::string> alerts;
    std::function<void()> onAsk;
    int answer = messagebox::kNo;
    int registrySaves = 0, banSaves = 0;
    zetaudiofilterhost::PluginModuleInfoManager& registry =
        *zetaudiofilterhost::PluginModuleInfoManager::GetInstance();
    zetaudiopluginhost::BannedPluginManager& banned = *zetaudiopluginhost::BannedPluginManager::GetInstance();
};

TEST_F(ScanNoteShown, AGoodScanShowsNothingAndSavesNothingMore)
{
    const Watched host(*this);
    Scan({Install("good/vst2_effect", "effect")});
    EXPECT_THAT(questions, IsEmpty());
    EXPECT_EQ(registry.RecordCount(), 1u);
    EXPECT_EQ(registrySaves + banSaves, 0);
}

TEST_F(ScanNoteShown, ABadPluginIsToldOnceAndItsBanIsSaved)
{
    const Watched host(*this);
    Scan({Install("good/vst2_effect", "effect"), Install("bad/crash_in_entry", "bad")});
    ASSERT_EQ(questions.size(), 1u);
    EXPECT_THAT(questions[0].message,
                testing::StartsWith("Plug-ins after the scan:\n\nNew: 1\n\nNot working: 1\n\u2022 bad"));
    EXPECT_EQ(questions[0].buttonSet, messagebox::kOK);
    EXPECT_EQ(banSaves, 1);
    registry.GetPluginInfosChangedSignal()();
    EXPECT_EQ(questions.size(), 1u) << "the signal of something else";
}

TEST_F(ScanNoteShown, WithoutAScannerThePluginsStayAndTheNoteSaysSo)
{
    const PluginLocator effect = Install("good/vst2_effect", "effect");
    Scan({effect});
    const Watched host(*this);
    TakeScannerAway();
    // The window fills its list when the scan returns, which is after the note.
    std::size_t listedDuringNote = 0;
    onAsk = [&] { listedDuringNote = registry.RecordCount(); };
    Scan({effect, Install("good/vst2_synth", "new one")});
    ASSERT_EQ(questions.size(), 1u);
    EXPECT_EQ(listedDuringNote, 1u);
    EXPECT_TRUE(registry.Find(effect));
    EXPECT_EQ(registrySaves, 1);
    EXPECT_EQ(questions[0].buttonSet, messagebox::kYesNo);
    EXPECT_EQ(questions[0].defaultButton, messagebox::kYes);
    EXPECT_THAT(questions[0].message,
                AllOf(HasSubstr("The scanner program could not be started.\n"),
                      HasSubstr("Plug-ins not scanned: 2\n"), testing::EndsWith("\n\nScan them now?")));
    EXPECT_THAT(host.watch.Last().changes.removed, IsEmpty());
}

TEST_F(ScanNoteShown, TheUserMayScanThemNowAndIsToldWhatCameOfIt)
{
    const Watched host(*this);
    TakeScannerAway();
    answer = messagebox::kYes;
    onAsk = [this] { GiveScannerBack(); };
    const PluginLocator effect = Install("good/vst2_effect", "effect");
    Scan({effect, Install("bad/crash_in_entry", "bad")});
    ASSERT_EQ(questions.size(), 2u);
    EXPECT_THAT(questions[1].message,
                testing::StartsWith("Plug-ins after the scan:\n\nNew: 1\n\nNot working: 1\n"));
    EXPECT_EQ(questions[1].buttonSet, messagebox::kOK);
    EXPECT_TRUE(registry.Find(effect));
    questions.clear();
    Scan({effect});
    EXPECT_THAT(questions, IsEmpty());
}

TEST_F(ScanNoteShown, WhoAlwaysWantsToScanThemNowIsNotAskedWithoutEnd)
{
    const Watched host(*this);
    TakeScannerAway();
    answer = messagebox::kYes;
    Scan({Install("good/vst2_effect", "effect")});
    ASSERT_EQ(questions.size(), 2u);
    EXPECT_EQ(questions[0].buttonSet, messagebox::kYesNo);
    EXPECT_EQ(questions[1].buttonSet, messagebox::kOK) << "it got no further";
    GiveScannerBack();
}

TEST_F(ScanNoteShown, AReloadThatIsNotReachedKeepsTheBanWithItsReason)
{
    const PluginLocator bad = Install("bad/crash_in_entry", "bad");
    const zetaudiopluginhost::BanInfo ban{"crashed once", 1'000'000'000, {7, 8}, true};
    banned.AddBannedPlugin(bad, ban);
    const Watched host(*this);
    TakeScannerAway();
    banned.RemoveBannedPlugin(bad);
    Scan({bad});
    EXPECT_EQ(banned.GetBanInfo(bad), ban);
    EXPECT_EQ(banSaves, 1);
    EXPECT_THAT(host.watch.Last().bannedAgain, ElementsAre(bad));
    EXPECT_THAT(host.watch.Last().changes.removed, IsEmpty());
    ASSERT_EQ(questions.size(), 1u);
    EXPECT_THAT(questions[0].message, HasSubstr("Plug-ins not scanned: 1\n"));
    registry.GetPluginInfosChangedSignal()();
    EXPECT_EQ(questions.size(), 1u) << "the signal of something else tells nothing of the scan again";
    EXPECT_EQ(banSaves, 1);
    GiveScannerBack();
}

TEST_F(ScanNoteShown, AReloadThatIsReachedKeepsNoBan)
{
    const PluginLocator effect = Install("good/vst2_effect", "effect");
    banned.AddBannedPlugin(effect, "why");
    const Watched host(*this);
    banned.RemoveBannedPlugin(effect);
    Scan({effect});
    EXPECT_FALSE(banned.IsBanned(effect));
    EXPECT_TRUE(registry.Find(effect));
    EXPECT_THAT(questions, IsEmpty());
    EXPECT_EQ(host.watch.Last().changes.restored.size(), 1u);
}

} // namespace

} // namespace zetaudiopluginmanager
