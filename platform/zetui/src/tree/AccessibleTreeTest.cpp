// These tests go through a list as a screen reader does.
#include <QAccessible>
#include <QHeaderView>
#include <gmock/gmock.h>

#include "testing/TreeCellsFixture.h"

namespace zetui::controls {
namespace {

using ::testing::ElementsAre;

class AccessibleTreeTest : public TreeCellsFixture
{
  protected:
    QAccessibleInterface& List()
    {
        QAccessibleInterface* const list = QAccessible::queryAccessibleInterface(&view);
        if (!list || !list->tableInterface())
            throw std::runtime_error("a screen reader sees no table");
        return *list;
    }
    QAccessibleInterface& Cell(int place, int position)
    {
        QAccessibleInterface* const cell = List().tableInterface()->cellAt(place, position);
        if (!cell)
            throw std::runtime_error("there is no such cell");
        return *cell;
    }
    static std::string Name(QAccessibleInterface& each) { return each.text(QAccessible::Name).toStdString(); }
    static std::string Description(QAccessibleInterface& each)
    {
        return each.text(QAccessible::Description).toStdString();
    }
    static void Do(QAccessibleInterface& each, const QString& action)
    {
        ASSERT_TRUE(each.actionInterface());
        ASSERT_TRUE(each.actionInterface()->actionNames().contains(action)) << action.toStdString();
        each.actionInterface()->doAction(action);
    }
    static const QString& Toggle() { return QAccessibleActionInterface::toggleAction(); }
    static const QString& PressName() { return QAccessibleActionInterface::pressAction(); }
};

TEST_F(AccessibleTreeTest, IsReadAsItIsSeen)
{
    Fill(Names{L"Echo", L"Verb"});
    Show();
    QAccessibleInterface& list = List();
    const auto read = [&] {
        std::vector<std::string> names;
        for (int child = 0; child < list.childCount(); ++child) {
            names.push_back(Name(*list.child(child)));
            EXPECT_EQ(list.indexOfChild(list.child(child)), child);
            EXPECT_EQ(list.child(child)->parent(), &list);
        }
        return names;
    };
    EXPECT_THAT(read(), ElementsAre("On", "Name", "Version", "On: 1, Echo", "Name: Echo", "Version: 1.0",
                                    "On: 1, Verb", "Name: Verb", "Version: 1.0"));
    tree->GetHeaderRow()->MoveColumn(tree->GetHeaderRow()->GetColumnAt(2), 0);
    EXPECT_EQ(Name(*list.child(0)), "Version");
    EXPECT_EQ(Name(Cell(1, 2)), "Name: Verb");
    EXPECT_EQ(list.tableInterface()->columnDescription(2), "Name");
}

TEST_F(AccessibleTreeTest, ControlsAreChildrenOfTheirCells)
{
    Fill(3);
    Show();
    QAccessibleInterface* const box = QAccessible::queryAccessibleInterface(CheckboxAt(1));
    ASSERT_EQ(Cell(1, 0).childCount(), 1);
    EXPECT_EQ(Cell(1, 0).child(0), box);
    EXPECT_EQ(box->parent(), &Cell(1, 0));
    EXPECT_EQ(Cell(1, 0).indexOfChild(box), 0);
    EXPECT_EQ(box->role(), QAccessible::CheckBox);
    QAccessibleInterface* const button = QAccessible::queryAccessibleInterface(ButtonAt(1));
    EXPECT_EQ(Cell(1, 2).child(0), button);
    EXPECT_EQ(button->parent(), &Cell(1, 2));
    EXPECT_EQ(Cell(1, 1).childCount(), 0);
    const QPoint middle = box->rect().center();
    EXPECT_EQ(List().childAt(middle.x(), middle.y()), &Cell(1, 0));
    EXPECT_EQ(Cell(1, 0).childAt(middle.x(), middle.y()), box);
    EXPECT_TRUE(Cell(1, 0).rect().contains(middle));
}

TEST_F(AccessibleTreeTest, ACellWorksItsBox)
{
    Fill(3);
    Show();
    int changes = 0;
    checkboxes[tree->GetRowAt(1).get()]->NotifyWhenChanged(
        std::make_shared<std::function<void(ui::UI_Message*)>>([&](ui::UI_Message*) { ++changes; }));
    EXPECT_TRUE(Cell(1, 0).state().checkable);
    EXPECT_FALSE(Cell(1, 0).state().checked);
    Do(Cell(1, 0), Toggle());
    EXPECT_TRUE(checkboxes[tree->GetRowAt(1).get()]->IsChecked());
    EXPECT_TRUE(Cell(1, 0).state().checked);
    EXPECT_EQ(changes, 1) << "the handler must hear of it, as of a click";
    Do(*Cell(1, 0).child(0), Toggle());
    EXPECT_FALSE(Cell(1, 0).state().checked);
    EXPECT_EQ(changes, 2);
    checkboxes[tree->GetRowAt(1).get()]->UI_SetEnabled(false);
    EXPECT_FALSE(Cell(1, 0).actionInterface()->actionNames().contains(Toggle()));
    EXPECT_FALSE(Cell(1, 1).state().checkable);
}

TEST_F(AccessibleTreeTest, ACellOutOfSightWorksItsControl)
{
    using Kind = CellControl::Kind;
    Fill(200);
    tree->SetCellControlFunction([](RowPtr, int position) {
        return position == 0   ? CellControl{Kind::Checkbox, true, true}
               : position == 2 ? CellControl{Kind::Button, true, false}
                               : CellControl{};
    });
    Show();
    EXPECT_TRUE(Cell(150, 0).state().offscreen);
    EXPECT_FALSE(Cell(1, 0).state().offscreen);
    EXPECT_EQ(Cell(150, 0).childCount(), 0);
    EXPECT_TRUE(Cell(150, 0).state().checked) << "as the owner says";
    Do(Cell(150, 0), Toggle());
    const RowPtr row = tree->GetRowAt(150);
    ASSERT_TRUE(tree->IsRowVisible(row.get()));
    EXPECT_TRUE(checkboxes[row.get()]->IsChecked());
    EXPECT_FALSE(Cell(150, 0).state().offscreen);
    EXPECT_EQ(Cell(150, 0).childCount(), 1);

    bool pressed = false;
    const RowPtr top = tree->GetRowAt(0);
    ASSERT_FALSE(tree->IsRowVisible(top.get()));
    Do(Cell(0, 2), PressName());
    buttons[top.get()]->NotifyWhenChanged(
        std::make_shared<std::function<void(ui::UI_Message*)>>([&](ui::UI_Message*) { pressed = true; }));
    EXPECT_FALSE(pressed) << "the screen reader waits for the answer first";
    EXPECT_TRUE(WaitUntil([&] { return pressed; }));
}

TEST_F(AccessibleTreeTest, TheNameOfABoxesCellSaysOfWhatItIs)
{
    Fill(Names{L"Echo"});
    tree->SetCellTextFunction([](RowPtr, int position) {
        return position == 0 ? std::wstring(L"on") : position == 1 ? std::wstring(L"Echo") : std::wstring();
    });
    tree->SetCellTooltipFunction(
        [](RowPtr, int position) { return position == 1 ? std::wstring(L"Echo") : std::wstring(L"why"); });
    Show();
    EXPECT_EQ(Name(Cell(0, 0)), "On: on, Echo");
    EXPECT_EQ(Cell(0, 0).text(QAccessible::Value), "on");
    EXPECT_EQ(Name(Cell(0, 1)), "Name: Echo");
    EXPECT_EQ(Name(Cell(0, 2)), "Version") << "it has no value";
    EXPECT_EQ(Description(Cell(0, 1)), "") << "the tooltip of a cut text says the text again";
    EXPECT_EQ(Description(Cell(0, 2)), "why");
}

TEST_F(AccessibleTreeTest, TitlesSayHowTheListIsSortedAndSortIt)
{
    Fill(Names{L"Verb", L"Echo"});
    Show();
    QAccessibleInterface& title = *List().child(1);
    EXPECT_EQ(title.role(), QAccessible::ColumnHeader);
    EXPECT_EQ(Description(title), "");
    EXPECT_EQ(Name(Cell(0, 1)), "Name: Verb");
    Do(title, PressName());
    EXPECT_EQ(Description(title), "sorted, ascending");
    EXPECT_EQ(Name(Cell(0, 1)), "Name: Echo");
    Do(title, PressName());
    EXPECT_EQ(Description(title), "sorted, descending");
    EXPECT_EQ(Name(Cell(0, 1)), "Name: Verb");
    EXPECT_EQ(Description(*List().child(2)), "");
    Do(*List().child(2), PressName());
    EXPECT_EQ(Description(*List().child(2)), "sorted, ascending");
    EXPECT_EQ(Description(title), "");
    EXPECT_FALSE(title.actionInterface()->localizedActionDescription(PressName()).isEmpty());
    EXPECT_EQ(Cell(0, 1).tableCellInterface()->columnHeaderCells(), QList<QAccessibleInterface*>{&title});
    EXPECT_EQ(Cell(0, 2).tableCellInterface()->rowHeaderCells(), QList<QAccessibleInterface*>{&Cell(0, 1)});
}

TEST_F(AccessibleTreeTest, TheCellOfTheKeyboardHasTheFocus)
{
    Fill(5);
    Show();
    ClickCell(2, 1);
    ASSERT_TRUE(view.hasFocus());
    EXPECT_TRUE(Cell(2, 1).state().focused);
    EXPECT_EQ(List().focusChild(), &Cell(2, 1));
    EXPECT_TRUE(Cell(2, 0).state().selected);
    EXPECT_TRUE(List().tableInterface()->isRowSelected(2));
    EXPECT_THAT(List().tableInterface()->selectedRows(), ElementsAre(2));
    Press(Qt::Key_Down);
    EXPECT_FALSE(Cell(2, 1).state().focused);
    EXPECT_TRUE(Cell(3, 1).state().focused);
    Do(Cell(4, 1), QAccessibleActionInterface::setFocusAction());
    EXPECT_TRUE(Cell(4, 1).state().focused);
    EXPECT_EQ(tree->GetSelectedCellOfSelectedRow(), 1);
    EXPECT_TRUE(List().tableInterface()->unselectRow(4));
    EXPECT_FALSE(tree->IsAnyRowSelected());
    EXPECT_TRUE(List().tableInterface()->selectRow(0));
    EXPECT_THAT(List().tableInterface()->selectedRows(), ElementsAre(0));
}

TEST_F(AccessibleTreeTest, TheFramedTitleHasTheFocus)
{
    Fill(2);
    Show();
    QHeaderView* const titles = view.horizontalHeader();
    titles->setFocus();
    ASSERT_TRUE(titles->hasFocus());
    QTest::keyClick(titles, Qt::Key_Home);
    QTest::keyClick(titles, Qt::Key_Right);
    EXPECT_FALSE(List().child(0)->state().focused);
    EXPECT_TRUE(List().child(1)->state().focused);
    QAccessibleInterface* const row = QAccessible::queryAccessibleInterface(titles);
    ASSERT_EQ(row->childCount(), 3);
    EXPECT_EQ(row->child(1), List().child(1));
    EXPECT_EQ(row->indexOfChild(List().child(2)), 2);
}

TEST_F(AccessibleTreeTest, CellsOfRowsThatAreGoneAreGone)
{
    Fill(5);
    Show();
    const QAccessible::Id cell = QAccessible::uniqueId(&Cell(4, 1));
    const QAccessible::Id title = QAccessible::uniqueId(List().child(1));
    ASSERT_TRUE(QAccessible::accessibleInterface(cell));
    tree->RemoveAllRows();
    EXPECT_FALSE(QAccessible::accessibleInterface(cell));
    EXPECT_TRUE(QAccessible::accessibleInterface(title)) << "the columns are the same";
    EXPECT_EQ(List().childCount(), 3);
    EXPECT_EQ(List().tableInterface()->cellAt(0, 0), nullptr);
}

} // namespace
} // namespace zetui::controls
