#include "session/CautionCounter.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <zetui/dialogs/messagebox.h>

namespace zetaudiopluginmanager {
namespace {

using zetui::dialogs::AlertKind;

/// Notes what it is asked to show.
class Notes : public zetui::dialogs::Presentation
{
  public:
    std::unique_ptr<zetui::dialogs::ProgressPresentation> CreateProgress(zetui::ui::WindowVariant) override
    {
        calls.emplace_back("progress");
        return nullptr;
    }
    void ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                   zetui::ui::WindowVariant) override
    {
        calls.push_back((kind == AlertKind::Caution ? "caution " : "note ") + title + " " + message);
    }
    int Ask(const zetui::dialogs::Question& question, zetui::ui::WindowVariant) override
    {
        calls.push_back("ask " + question.message);
        return 7;
    }
    void ShowText(const std::string& title, const std::string& text, zetui::ui::WindowVariant) override
    {
        calls.push_back("text " + title + " " + text);
    }
    std::wstring ChooseFolder(const std::wstring&, zetui::ui::WindowVariant) override
    {
        calls.emplace_back("folder");
        return L"/chosen";
    }

    std::vector<std::string> calls;
};

TEST(CautionCounter, HandsEverythingOnAsItIsAndCountsTheCautions)
{
    const auto notes = std::make_shared<Notes>();
    CautionCounter counter(notes);
    counter.CreateProgress({});
    counter.ShowAlert(AlertKind::Note, "a", "b", {});
    counter.ShowAlert(AlertKind::Caution, "c", "d", {});
    zetui::dialogs::Question question;
    question.message = "sure?";
    EXPECT_EQ(counter.Ask(question, {}), 7);
    counter.ShowText("a log", "of many lines", {});
    EXPECT_EQ(counter.ChooseFolder(L"title", {}), L"/chosen");
    EXPECT_THAT(notes->calls, testing::ElementsAre("progress", "note a b", "caution c d", "ask sure?",
                                                   "text a log of many lines", "folder"));
    EXPECT_EQ(counter.Cautions(), 1);
}

} // namespace
} // namespace zetaudiopluginmanager
