#include <zetui/dialogs/messagebox.h>

#include <cstdio>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <zetui/dialogs/OS_FolderChooserDialog.h>
#include <zetui/dialogs/ProgressPresentation.h>
#include <zetui/dialogs/TerminalPresentation.h>

namespace zetui::dialogs {
namespace {

class AlertRecorder : public Presentation
{
  public:
    std::unique_ptr<ProgressPresentation> CreateProgress(ui::WindowVariant) override { return nullptr; }
    void ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                   ui::WindowVariant) override
    {
        alerts.push_back((kind == AlertKind::Note ? "note " : "caution ") + title + ": " + message);
    }
    int Ask(const Question& question, ui::WindowVariant) override
    {
        asked = question;
        return messagebox::kYes;
    }
    std::vector<std::string> alerts;
    Question asked;
};

class MessageBox : public ::testing::Test
{
  protected:
    MessageBox() { SetPresentation(recorder); }
    ~MessageBox() override { SetPresentation(nullptr); }

    std::shared_ptr<AlertRecorder> recorder = std::make_shared<AlertRecorder>();
};

TEST_F(MessageBox, NotesAndCautionsGoToThePresentationInUseAsUtf8)
{
    messagebox::ShowNote(nullptr, L"Gr\u00FC\u00DFe", L"note", {});
    messagebox::ShowCaution(nullptr, L"Host", L"caution", {});
    EXPECT_EQ(recorder->alerts, (std::vector<std::string>{"note Gr\xc3\xbc\xc3\x9f"
                                                          "e: note",
                                                          "caution Host: caution"}));
}

TEST_F(MessageBox, ThePresentationIsTheTerminalsUnlessAnotherIsInstalled)
{
    SetPresentation(nullptr);
    EXPECT_NE(std::dynamic_pointer_cast<TerminalPresentation>(GetPresentation()), nullptr);
    EXPECT_EQ(GetPresentation(), GetPresentation());
}

TEST_F(MessageBox, AsksThePresentationInUseAndGivesItsAnswer)
{
    EXPECT_EQ(messagebox::Messagebox(nullptr, L"Host", L"Gr\u00FC\u00DFe?", {}, messagebox::kYesNo,
                                     messagebox::kNo, messagebox::kIconCaution),
              messagebox::kYes);
    EXPECT_EQ(recorder->asked.title, "Host");
    EXPECT_EQ(recorder->asked.message, "Gr\xc3\xbc\xc3\x9f"
                                       "e?");
    EXPECT_EQ(recorder->asked.buttonSet, 80);
    EXPECT_EQ(recorder->asked.defaultButton, 64);
    EXPECT_EQ(recorder->asked.icon, 2);
}

TEST_F(MessageBox, AlwaysHasAButtonAndADefaultAmongItsButtons)
{
    struct Case
    {
        int buttons, defaultButton, expectedButtons, expectedDefault;
    };
    for (const Case& one : {Case{0, 0, 1, 1}, Case{4, 4, 1, 1}, Case{80, 0, 80, 16}, Case{80, 1, 80, 16},
                            Case{80 | 4, 64, 80, 64}, Case{3, 2, 3, 2}, Case{-1, 2, 83, 2}}) {
        messagebox::Messagebox(nullptr, L"", L"", {}, one.buttons, one.defaultButton, 0);
        EXPECT_EQ(recorder->asked.buttonSet, one.expectedButtons) << one.buttons;
        EXPECT_EQ(recorder->asked.defaultButton, one.expectedDefault) << one.buttons;
    }
}

TEST_F(MessageBox, TheTerminalShowsTheQuestionAndTakesTheDefaultButton)
{
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> output(std::tmpfile(), &std::fclose);
    const auto terminal = std::make_shared<TerminalPresentation>(output.get());
    SetPresentation(terminal);
    EXPECT_EQ(messagebox::Messagebox(nullptr, L"Host", L"Continue?", {}, messagebox::kYesNo, messagebox::kNo,
                                     messagebox::kIconCaution),
              messagebox::kNo);
    EXPECT_EQ(messagebox::Messagebox(nullptr, L"Host", L"Continue?", {}, messagebox::kYesNo, messagebox::kYes,
                                     messagebox::kIconNone),
              messagebox::kYes);
    EXPECT_EQ(terminal->GetCounts().cautions, 1);
    EXPECT_EQ(terminal->GetCounts().notes, 1);
}

TEST_F(MessageBox, WithoutWindowsNoFolderIsChosen)
{
    OS_FolderChooserDialog chooser{ui::WindowVariant()};
    chooser.SetWindowTitle(L"Choose:");
    EXPECT_FALSE(chooser.RunModal());
    EXPECT_EQ(chooser.GetPath(), L"");
}

} // namespace
} // namespace zetui::dialogs
