// The context menus of a tree's rows.
#include <QMenu>

#include "testing/TreeCellsFixture.h"
#include <zettesting/Patience.h>

namespace zetui::controls {
namespace {

class UI_MultiColumnTreeMenuTest : public TreeCellsFixture
{
  protected:
    void Open(int rows)
    {
        Fill(rows);
        tree->SetRowMenuFunction([this](const RowPtr& row) {
            asked.push_back(entries[row.get()].name);
            UI_ContextMenu menu;
            if (!isEmpty) {
                menu.AddCommand(
                    L"&First", [this] { chosen.emplace_back(L"first"); }, firstIsEnabled);
                menu.AddSeparator();
                menu.AddSeparator();
                menu.AddCommand(L"Second", [this] { chosen.emplace_back(L"second"); });
            }
            return menu;
        });
        Show();
    }
    static QMenu* Popup() { return qobject_cast<QMenu*>(QApplication::activePopupWidget()); }
    void RightClick(const QPoint& at)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, view.viewport()->mapToGlobal(at));
        QApplication::sendEvent(view.viewport(), &event);
    }
    void Close()
    {
        if (Popup())
            Popup()->close();
        QCoreApplication::processEvents();
        ActivateAgain();
    }
    /// Without a screen nobody activates the window again that a closed menu leaves behind.
    void ActivateAgain()
    {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window, zettesting::patienceInMilliseconds));
    }

    Names asked, chosen;
    bool isEmpty = false, firstIsEnabled = true;
};

TEST_F(UI_MultiColumnTreeMenuTest, TheKeysOpenItAtTheFramedRow)
{
    Open(5);
    Press(Qt::Key_Down);
    Press(Qt::Key_Down);
    const std::vector<std::pair<int, Qt::KeyboardModifiers>> keys = {{Qt::Key_Menu, Qt::NoModifier},
                                                                     {Qt::Key_F10, Qt::ShiftModifier}};
    for (const auto& [key, modifiers] : keys) {
        asked.clear();
        Press(key, modifiers);
        ASSERT_TRUE(Popup());
        EXPECT_EQ(asked, Names{L"Plug-In 1"});
        EXPECT_EQ(Popup()->activeAction(), Popup()->actions().front());
        const QPoint at = view.viewport()->mapFromGlobal(Popup()->pos());
        EXPECT_EQ(at.y(), 2 * rowHeight) << "below the row";
        EXPECT_TRUE(view.viewport()->rect().contains(at));
        Close();
        EXPECT_EQ(QApplication::focusWidget(), &view);
    }
}

TEST_F(UI_MultiColumnTreeMenuTest, WithoutASelectionTheKeysSelectTheFirstRowInSight)
{
    Open(5);
    Press(Qt::Key_Menu);
    ASSERT_TRUE(Popup());
    EXPECT_EQ(SelectedNames(), Names{L"Plug-In 0"});
    Close();
}

TEST_F(UI_MultiColumnTreeMenuTest, ARowOutOfSightIsBroughtIntoSightFirst)
{
    Open(100);
    Press(Qt::Key_Down);
    view.verticalScrollBar()->setValue(view.verticalScrollBar()->maximum());
    Press(Qt::Key_Menu);
    ASSERT_TRUE(Popup());
    EXPECT_EQ(asked, Names{L"Plug-In 0"});
    EXPECT_EQ(view.verticalScrollBar()->value(), 0);
    Close();
}

TEST_F(UI_MultiColumnTreeMenuTest, TheKeysWorkInTheControlsOfARowToo)
{
    Open(5);
    ClickCell(3, 1);
    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), CheckboxAt(3));
    Press(Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(Popup());
    EXPECT_EQ(asked, Names{L"Plug-In 3"});
    Close();
}

TEST_F(UI_MultiColumnTreeMenuTest, TheRightButtonSelectsTheRowAndOpensItThere)
{
    Open(5);
    ClickCell(0, 1);
    const QPoint at = CellCenter(2, 1);
    RightClick(at);
    ASSERT_TRUE(Popup());
    EXPECT_EQ(asked, Names{L"Plug-In 2"});
    EXPECT_EQ(SelectedNames(), Names{L"Plug-In 2"});
    EXPECT_EQ(Popup()->pos(), view.viewport()->mapToGlobal(at));
    EXPECT_EQ(Popup()->activeAction(), nullptr);
    Close();
    asked.clear();
    RightClick(QPoint(20, 5 * rowHeight + 10));
    EXPECT_EQ(Popup(), nullptr) << "below the rows";
    EXPECT_TRUE(asked.empty());
}

TEST_F(UI_MultiColumnTreeMenuTest, ChoosesWhenTheMenuHasClosed)
{
    Open(2);
    Press(Qt::Key_Menu);
    ASSERT_TRUE(Popup());
    ASSERT_EQ(Popup()->actions().size(), 3);
    EXPECT_TRUE(Popup()->actions().at(1)->isSeparator());
    QTest::keyClick(Popup(), Qt::Key_Return);
    EXPECT_TRUE(WaitUntil([this] { return !chosen.empty(); }));
    EXPECT_EQ(chosen, Names{L"first"});
    EXPECT_EQ(Popup(), nullptr);
    ActivateAgain();
    firstIsEnabled = false;
    Press(Qt::Key_Menu);
    ASSERT_TRUE(Popup());
    EXPECT_FALSE(Popup()->actions().front()->isEnabled());
    EXPECT_EQ(Popup()->activeAction(), Popup()->actions().back());
    QTest::keyClick(Popup(), Qt::Key_Escape);
    QCoreApplication::processEvents();
    EXPECT_EQ(chosen, Names{L"first"});
}

TEST_F(UI_MultiColumnTreeMenuTest, AnEmptyMenuAndATreeWithoutMenusOpenNone)
{
    Open(2);
    isEmpty = true;
    Press(Qt::Key_Menu);
    EXPECT_EQ(Popup(), nullptr);
    isEmpty = false;
    tree->SetRowMenuFunction({});
    Press(Qt::Key_Menu);
    RightClick(CellCenter(0, 1));
    EXPECT_EQ(Popup(), nullptr);
    Press(Qt::Key_F10);
    EXPECT_EQ(Popup(), nullptr);
}

} // namespace
} // namespace zetui::controls
