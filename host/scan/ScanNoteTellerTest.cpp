// The note is shown after real scans, and asks whether to scan again.
#include "scan/ScanNote.h"

#include <chrono>
#include <functional>

#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>
#include <zetui/dialogs/ProgressPresentation.h>
#include <zetui/dialogs/messagebox.h>

namespace zetaudiopluginmanager {

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhostui::AudioPluginScan;
namespace messagebox = zetui::dialogs::messagebox;

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
        ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
        ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
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
    /// One is there that is no program.
    void SpoilScanner() const
    {
        TakeScannerAway();
        zettesting::WriteAll(folder.Path() /
                                 std::filesystem::path(AudioPluginScan::GetScannerProgram().GetTitle()),
                             "no program");
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

TEST_F(ScanNoteShown, ADamagedFileIsToldWithItsPlace)
{
    const std::filesystem::path file = folder.Path() / "AudioPlugins.xml";
    TellOfDamagedFile(zetcore::filesupport::File(zettesting::ToWide(file)));
    EXPECT_THAT(alerts,
                ElementsAre(AllOf(HasSubstr("“.damaged”"), testing::EndsWith("\n\n" + file.string()))));
    EXPECT_THAT(questions, IsEmpty());
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
    EXPECT_EQ(questions[0].buttonSet, messagebox::kOK)
        << "it is not there, so that a further try cannot help";
    EXPECT_THAT(questions[0].message,
                AllOf(HasSubstr("The scanner program could not be started.\n"),
                      HasSubstr("Plug-ins not scanned: 2\n"), testing::Not(HasSubstr("Try again?"))));
    EXPECT_THAT(host.watch.Last().changes.removed, IsEmpty());
}

TEST_F(ScanNoteShown, AScannerThatIsThereAndDoesNotStartMayBeTriedAgain)
{
    const Watched host(*this);
    SpoilScanner();
    Scan({Install("good/vst2_effect", "effect")});
    GiveScannerBack();
    ASSERT_EQ(questions.size(), 1u);
    EXPECT_EQ(questions[0].buttonSet, messagebox::kYesNo);
    EXPECT_EQ(questions[0].defaultButton, messagebox::kYes);
    EXPECT_THAT(questions[0].message, testing::EndsWith("\n\nTry again?"));
}

TEST_F(ScanNoteShown, TheUserMayScanThemNowAndIsToldWhatCameOfIt)
{
    const Watched host(*this);
    SpoilScanner();
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
    SpoilScanner();
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
