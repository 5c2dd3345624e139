#include <zetui/dialogs/TerminalPresentation.h>

#include <cstdio>
#include <memory>

#include <zetcore/threads/MainThread.h>
#include <zetcore/threads/PlainEventLoop.h>
#include <zettesting/HostFixture.h>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::dialogs {
namespace {

/// A presentation on a file, which is no terminal.
class PlainPresentation : public zettesting::HostFixture
{
  protected:
    PlainPresentation()
        : path(folder / "output"), stream(std::fopen(path.string().c_str(), "wb"), &std::fclose),
          presentation(std::make_shared<TerminalPresentation>(stream.get()))
    {
        zetcore::threads::RegisterMainThread(std::make_shared<zetcore::threads::PlainEventLoop>());
    }
    ~PlainPresentation() override { SetPresentation(nullptr); }

    std::string Output() const { return zettesting::ReadAll(path); }

    std::filesystem::path path;
    std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream;
    std::shared_ptr<TerminalPresentation> presentation;
};

TEST_F(PlainPresentation, WritesTheTitleAndALineForEachStep)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetExtraText("/vst/a.so");
    progress->SetProgress(0, 2, "");
    progress->SetExtraText("/vst/b.so: sub");
    progress->SetProgress(1, 2, "");
    progress->ProcessEvents(false);
    progress->Hide();
    EXPECT_EQ(Output(), "Scanning\n[0/2] /vst/a.so\n[1/2] /vst/b.so: sub\n");
}

TEST_F(PlainPresentation, EndsWithAFullCountWhenAllIsDone)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->Finish();
    EXPECT_EQ(Output(), "Scanning\n") << "nothing has been counted";
    progress->SetExtraText("/vst/a.so");
    progress->SetProgress(1, 2, "");
    progress->Finish();
    progress->Hide();
    EXPECT_EQ(Output(), "Scanning\n[1/2] /vst/a.so\n[2/2]\n");
}

TEST_F(PlainPresentation, PatienceWritesNoLines)
{
    SetPresentation(presentation);
    const auto dialog = utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Scanning", "",
                                                                  ui::WindowVariant(), false, true, false);
    dialog->BeginModal();
    dialog->SetPatience(std::chrono::seconds(0), [](std::chrono::seconds) { return "waiting"; });
    dialog->SetExtraText("/vst/a.so");
    dialog->SetProgress(0, 1, "");
    dialog->ModalDuring();
    EXPECT_EQ(Output(), "Scanning\n[0/1] /vst/a.so\n");
}

TEST_F(PlainPresentation, DoesNotRepeatALine)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetExtraText("/vst/a.so");
    progress->SetProgress(0, 2, "");
    progress->SetProgress(0, 2, "");
    EXPECT_EQ(Output(), "Scanning\n[0/2] /vst/a.so\n");
}

TEST_F(PlainPresentation, TextsCannotCommandATerminal)
{
    const auto progress = presentation->CreateProgress({});
    progress->Show("Title\x1b]0;x\a", "", true);
    progress->SetExtraText("a\nb\x1b[31m");
    progress->SetProgress(0, 1, "");
    presentation->ShowAlert(AlertKind::Note, "t\x1b", "m\x1b\nn", {});
    EXPECT_EQ(Output(), "Title ]0;x \n[0/1] a b [31m\nt : m \nn\n");
}

TEST_F(PlainPresentation, AlertsAreTitleAndMessageAndAreCounted)
{
    presentation->ShowAlert(AlertKind::Note, "Host", "A note.", {});
    presentation->ShowAlert(AlertKind::Caution, "Host", "A caution.", {});
    EXPECT_EQ(Output(), "Host: A note.\nHost: A caution.\n");
    EXPECT_EQ(presentation->GetCounts().notes, 1);
    EXPECT_EQ(presentation->GetCounts().cautions, 1);
}

TEST_F(PlainPresentation, AQuietOneShowsAlertsOnly)
{
    TerminalPresentation quiet(stream.get(), true);
    const auto progress = quiet.CreateProgress({});
    progress->Show("Scanning", "", true);
    progress->SetExtraText("/vst/a.so");
    progress->SetProgress(0, 2, "");
    progress->ProcessEvents(false);
    progress->Finish();
    progress->Hide();
    quiet.ShowAlert(AlertKind::Caution, "Host", "A caution.", {});
    EXPECT_EQ(Output(), "Host: A caution.\n");
    EXPECT_EQ(quiet.GetCounts().lastTotal, 2u);
}

TEST_F(PlainPresentation, CountsDialogsAndTheTotalOfTheLastOne)
{
    for (const unsigned long long total : {5ull, 3ull}) {
        const auto progress = presentation->CreateProgress({});
        progress->Show("Scanning", "", true);
        progress->SetProgress(0, total, "");
        progress->Hide();
        EXPECT_EQ(presentation->GetCounts().lastTotal, total);
    }
    EXPECT_EQ(presentation->GetCounts().progressDialogs, 2);
    const auto empty = presentation->CreateProgress({});
    empty->Show("Scanning", "", true);
    EXPECT_EQ(presentation->GetCounts().lastTotal, 0u);
}

TEST_F(PlainPresentation, PostedCallsRunDuringTheModalRunWithoutARegisteredEventLoop)
{
    zetcore::threads::RegisterMainThread(nullptr);
    SetPresentation(presentation);
    const auto dialog = utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Scanning", "",
                                                                  ui::WindowVariant(), false, true, false);
    zetcore::threads::AsyncCallFromMainThread([&] { dialog->PostClose(); }, 0);
    EXPECT_EQ(dialog->RunModal(), UI_DialogViewContainer::kOK);
}

} // namespace
} // namespace zetui::dialogs
