#include <zetui/dialogs/messagebox.h>

#include <utility>

#include <gtest/gtest.h>
#include <zetui/dialogs/ProgressPresentation.h>
#include <zetui/dialogs/TerminalPresentation.h>

namespace zetui::dialogs {
namespace {

class Recorder : public Presentation
{
  public:
    std::unique_ptr<ProgressPresentation> CreateProgress() override { return nullptr; }
    void ShowAlert(AlertKind kind, const std::string& title, const std::string& message) override
    {
        alerts.push_back((kind == AlertKind::Note ? "note " : "caution ") + title + ": " + message);
    }
    std::vector<std::string> alerts;
};

class MessageBox : public ::testing::Test
{
  protected:
    MessageBox() { SetPresentation(recorder); }
    ~MessageBox() override { SetPresentation(nullptr); }

    std::shared_ptr<Recorder> recorder = std::make_shared<Recorder>();
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

} // namespace
} // namespace zetui::dialogs
