#include <zetui/controls/UI_TextEdit.h>

#include <QAction>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMenu>

#include "controls/ClearableLineEdit.h"
#include "testing/ControlFixture.h"

namespace zetui::controls {
namespace {

class UI_TextEditTest : public ControlFixture
{
  protected:
    void Watch(UI_TextEdit& edit)
    {
        edit.NotifyWhenChanged(Do([&](ui::UI_Message* message) {
            EXPECT_TRUE(dynamic_cast<ui::UI_ControlChangedMessage*>(message));
            committed.push_back(edit.GetValue());
        }));
        edit.NotifyWhenChangedInteractively(Do([&](ui::UI_Message* message) {
            EXPECT_TRUE(dynamic_cast<ui::UI_InteractiveControlChangedMessage*>(message));
            typed.push_back(edit.GetValue());
        }));
        edit.UI_GainKeyboardFocus(ui::kFocusChangeProgram);
    }
    static QLineEdit* Widget(UI_TextEdit& edit) { return static_cast<QLineEdit*>(WidgetOf(&edit)); }

    using Texts = std::vector<std::wstring>;
    Texts committed, typed;
};

TEST_F(UI_TextEditTest, EachCharacterIsAnInteractiveChange)
{
    const auto edit = Open<UI_TextEdit>();
    Watch(*edit);
    QTest::keyClicks(Widget(*edit), QStringLiteral("ab"));
    QTest::keyClick(Widget(*edit), Qt::Key_Backspace);
    EXPECT_EQ(typed, (Texts{L"a", L"ab", L"a"}));
    EXPECT_TRUE(committed.empty());
}

TEST_F(UI_TextEditTest, ReturnAndLeavingCommit)
{
    const auto edit = Open<UI_TextEdit>();
    const auto other = Open<UI_TextEdit>();
    Watch(*edit);
    QTest::keyClicks(Widget(*edit), QStringLiteral("a"));
    QTest::keyClick(Widget(*edit), Qt::Key_Return);
    EXPECT_EQ(committed, (Texts{L"a"}));
    QTest::keyClicks(Widget(*edit), QStringLiteral("b"));
    other->UI_GainKeyboardFocus(ui::kFocusChangeTab);
    EXPECT_EQ(committed, (Texts{L"a", L"ab"}));
}

TEST_F(UI_TextEditTest, ASetterSendsNothing)
{
    const auto edit = Open<UI_ClearButtonTextEdit>();
    Watch(*edit);
    edit->SetValue(L"\u00dcber \U0001F3B9");
    EXPECT_EQ(edit->GetValue(), L"\u00dcber \U0001F3B9");
    EXPECT_TRUE(typed.empty());
    EXPECT_TRUE(committed.empty());
}

TEST_F(UI_TextEditTest, TheClearButtonIsThereWhileThereIsText)
{
    const auto edit = Open<UI_ClearButtonTextEdit>();
    const auto* const widget = static_cast<ClearableLineEdit*>(Widget(*edit));
    EXPECT_FALSE(widget->ClearAction()->isVisible());
    QTest::keyClicks(Widget(*edit), QStringLiteral("a"));
    EXPECT_TRUE(widget->ClearAction()->isVisible());
    edit->SetValue(L"");
    EXPECT_FALSE(widget->ClearAction()->isVisible());
    ui::UI_ControlChangedMessage changed(edit.get());
    ui::UI_InteractiveControlChangedMessage interactive(edit.get());
    edit->EditTextChanged(&changed);
    edit->EditTextChangedInteractively(&interactive);
    EXPECT_FALSE(widget->ClearAction()->isVisible());
}

TEST_F(UI_TextEditTest, ClearingIsAChangeByTheUserThatIsComplete)
{
    const auto edit = Open<UI_SearchBox>(false, false);
    Watch(*edit);
    QTest::keyClicks(Widget(*edit), QStringLiteral("x"));
    const auto buttons = Widget(*edit)->findChildren<QWidget*>();
    QWidget* clear = nullptr;
    for (QWidget* const button : buttons) {
        if (button->isVisible() && button->x() > Widget(*edit)->width() / 2)
            clear = button;
    }
    ASSERT_NE(clear, nullptr);
    QTest::mouseClick(clear, Qt::LeftButton);
    EXPECT_EQ(edit->GetValue(), L"");
    EXPECT_EQ(typed, (Texts{L"x", L""}));
    EXPECT_EQ(committed, (Texts{L""}));
    QTest::keyClick(Widget(*edit), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit->GetValue(), L"x");
}

TEST_F(UI_TextEditTest, EscapeClearsAsTheButtonDoesAndIsTheWindowsInAnEmptyField)
{
    const auto edit = Open<UI_SearchBox>(false, false);
    Watch(*edit);
    QTest::keyClicks(Widget(*edit), QStringLiteral("x"));
    const auto escapeIsTaken = [&](Qt::KeyboardModifiers modifiers = {}) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Escape, modifiers);
        QApplication::sendEvent(Widget(*edit), &event);
        return event.isAccepted();
    };
    EXPECT_FALSE(escapeIsTaken(Qt::ShiftModifier));
    EXPECT_EQ(edit->GetValue(), L"x");
    EXPECT_TRUE(escapeIsTaken());
    EXPECT_EQ(edit->GetValue(), L"");
    EXPECT_EQ(typed, (Texts{L"x", L""}));
    EXPECT_EQ(committed, (Texts{L""}));
    EXPECT_FALSE(escapeIsTaken());
    QTest::keyClick(Widget(*edit), Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(edit->GetValue(), L"x") << "the user can take it back";
}

TEST_F(UI_TextEditTest, ASearchBoxExplainsItself)
{
    const auto box = Open<UI_SearchBox>(false, false);
    EXPECT_EQ(Widget(*box)->placeholderText(), QStringLiteral("Search"));
    box->SetPrompt(L"Filter");
    EXPECT_EQ(Widget(*box)->placeholderText(), QStringLiteral("Filter"));
    EXPECT_EQ(Widget(*box)->actions().size(), 2);
    EXPECT_FALSE(Widget(*box)->actions().at(1)->icon().isNull());
}

TEST_F(UI_TextEditTest, ASearchOnReturnOnlySendsNothingWhileTyping)
{
    const auto box = Open<UI_SearchBox>(false, true);
    Watch(*box);
    QTest::keyClicks(Widget(*box), QStringLiteral("a"));
    EXPECT_TRUE(typed.empty());
    QTest::keyClick(Widget(*box), Qt::Key_Return);
    EXPECT_EQ(committed, (Texts{L"a"}));
}

TEST_F(UI_TextEditTest, TheMenuOffersTheLatestSearches)
{
    const auto box = Open<UI_SearchBox>(true, false);
    auto* const widget = static_cast<SearchLineEdit*>(Widget(*box));
    for (const char* text : {"one", "two", "one"}) {
        box->SetValue(std::wstring(text, text + 3));
        QTest::keyClick(widget, Qt::Key_Return);
    }
    EXPECT_EQ(widget->Remembered(), (QStringList{QStringLiteral("one"), QStringLiteral("two")}));
    Watch(*box);
    widget->actions().at(1)->trigger();
    auto* const menu = widget->findChild<QMenu*>();
    ASSERT_NE(menu, nullptr);
    menu->actions().at(1)->trigger();
    menu->close();
    EXPECT_EQ(box->GetValue(), L"two");
    EXPECT_EQ(typed, (Texts{L"two"}));
    EXPECT_FALSE(committed.empty());
}

TEST_F(UI_TextEditTest, AControlWhoseWidgetIsGoneIsInert)
{
    const auto box = Open<UI_SearchBox>(true, false);
    delete WidgetOf(box.get());
    box->SetValue(L"x");
    box->SetPrompt(L"x");
    box->EditTextChanged(nullptr);
    box->EditTextChangedInteractively(nullptr);
    EXPECT_EQ(box->GetValue(), L"");
}

} // namespace
} // namespace zetui::controls
