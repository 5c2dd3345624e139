#include "testing/TreeCellsFixture.h"

namespace zetui::controls {
namespace {

class UI_MultiColumnTreeControlsTest : public TreeCellsFixture
{};

TEST_F(UI_MultiColumnTreeControlsTest, SurvivesAControlThatRemovesItsOwnRow)
{
    Fill(5);
    Show();
    const RowPtr row = tree->GetRowAt(2);
    buttons[row.get()]->NotifyWhenChanged(
        std::make_shared<std::function<void(ui::UI_Message*)>>([&](ui::UI_Message*) {
            const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
            tree->RemoveAllRows();
            checkboxes.clear();
            buttons.clear();
            Fill(4);
        }));
    QTest::mouseClick(ButtonAt(2), Qt::LeftButton);
    EXPECT_EQ(tree->GetRowCount(), 4);
    EXPECT_EQ(WidgetCount(), 4U);
}

TEST_F(UI_MultiColumnTreeControlsTest, MovesWithTabThroughTheControlsOfTheSelectedRowAndOut)
{
    Fill(30);
    Show();
    ClickCell(2, 1);
    ASSERT_TRUE(view.hasFocus());
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), CheckboxAt(2));
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 0);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), ButtonAt(2));
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &view);
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), view.horizontalHeader()) << "the titles come before the rows";
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &before);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), view.horizontalHeader());
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &view);
    Press(Qt::Key_Tab);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), ButtonAt(2));
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), CheckboxAt(2));
    Press(Qt::Key_Backtab, Qt::ShiftModifier);
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

TEST_F(UI_MultiColumnTreeControlsTest, SelectsTheRowWhoseControlGetsTheKeyboardInAnyWay)
{
    Fill(30);
    Show();
    QWidget* const button = ButtonAt(4);
    button->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(SelectedNames(), (Names{L"Plug-In 4"}));
    EXPECT_EQ(QApplication::focusWidget(), button) << "it keeps the keyboard";
    CheckboxAt(2)->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(SelectedNames(), (Names{L"Plug-In 2"}));
    tree->SetSupportMultipleSelections(true);
    tree->SelectRow(tree->GetRowAt(5).get(), true);
    CheckboxAt(5)->setFocus(Qt::OtherFocusReason);
    EXPECT_EQ(SelectedNames().size(), 2U) << "it is among the selected ones";
}

TEST_F(UI_MultiColumnTreeControlsTest, LeavesWithTabWhenNoRowIsSelected)
{
    Fill(30);
    Show();
    EXPECT_FALSE(tree->UI_DoKeyboardEvent(tree.get(), ui::KeyboardEvent(9, false, false, false)));
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after);
}

TEST_F(UI_MultiColumnTreeControlsTest, TakesTabAsAKeyboardEventOfItsWindow)
{
    Fill(30);
    Show();
    ClickCell(0, 1);
    const ui::KeyboardEvent tab(9, false, false, false);
    const ui::KeyboardEvent backTab(9, true, false, false);
    EXPECT_TRUE(tree->UI_DoKeyboardEvent(tree.get(), tab));
    EXPECT_EQ(QApplication::focusWidget(), CheckboxAt(0));
    EXPECT_TRUE(tree->UI_DoKeyboardEvent(tree.get(), backTab));
    EXPECT_EQ(QApplication::focusWidget(), &view);
    EXPECT_FALSE(tree->UI_DoKeyboardEvent(tree.get(), backTab));
    EXPECT_FALSE(tree->UI_DoKeyboardEvent(tree.get(), ui::KeyboardEvent('A', false, false, false)));
}

TEST_F(UI_MultiColumnTreeControlsTest, PassesOverDisabledControls)
{
    Fill(3);
    Show();
    checkboxes[tree->GetRowAt(0).get()]->UI_SetEnabled(false);
    ClickCell(0, 1);
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), ButtonAt(0));
}

TEST_F(UI_MultiColumnTreeControlsTest, MovesFromControlToControlWithTheArrowKeys)
{
    Fill(30);
    Show();
    ClickCell(0, 0);
    EXPECT_EQ(QApplication::focusWidget(), CheckboxAt(0));
    Press(Qt::Key_Down);
    EXPECT_EQ(QApplication::focusWidget(), CheckboxAt(1));
    Press(Qt::Key_End);
    EXPECT_EQ(QApplication::focusWidget(), CheckboxAt(29));
    Press(Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), &view);
    Press(Qt::Key_Right);
    EXPECT_EQ(QApplication::focusWidget(), ButtonAt(29));
}

TEST_F(UI_MultiColumnTreeControlsTest, KeepsTheFocusWhenTheFocusedControlScrollsAway)
{
    Fill(100);
    Show();
    ClickCell(0, 0);
    view.verticalScrollBar()->setValue(1000);
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

TEST_F(UI_MultiColumnTreeControlsTest, TogglesTheFirstCellsCheckboxWithSpace)
{
    Fill(100);
    Show();
    int messages = 0;
    ClickCell(1, 1);
    checkboxes[tree->GetRowAt(1).get()]->NotifyWhenChanged(
        std::make_shared<std::function<void(ui::UI_Message*)>>([&](ui::UI_Message*) { ++messages; }));
    Press(Qt::Key_Space);
    EXPECT_TRUE(checkboxes[tree->GetRowAt(1).get()]->IsChecked());
    EXPECT_EQ(messages, 1);
    checkboxes[tree->GetRowAt(1).get()]->UI_SetEnabled(false);
    Press(Qt::Key_Space);
    EXPECT_EQ(messages, 1);
    view.verticalScrollBar()->setValue(1500);
    Press(Qt::Key_Space);
    EXPECT_TRUE(tree->IsRowVisible(tree->GetRowAt(1).get())) << "what is toggled is seen";
}

TEST_F(UI_MultiColumnTreeControlsTest, SelectsTheRowOfAControlThatIsClicked)
{
    Fill(5);
    Show();
    QTest::mouseClick(CheckboxAt(3), Qt::LeftButton, {}, QPoint(7, 7));
    EXPECT_EQ(SelectedNames(), Names{L"Plug-In 3"});
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 0);
    EXPECT_TRUE(checkboxes[tree->GetRowAt(3).get()]->IsChecked());
}

} // namespace
} // namespace zetui::controls
