// The foot of a tree tells about the selected row, and about the tree itself.
#include <QAbstractTextDocumentLayout>
#include <QAccessible>
#include <QClipboard>
#include <QLabel>
#include <QPlainTextEdit>
#include <QTextBlock>

#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"
#include "testing/TreeFixture.h"

namespace zetui::controls {
namespace {

class TreeFootTest : public TreeFixture
{
  protected:
    TreeFootTest()
    {
        MakeColumns();
        Fill(30);
        tree->UI_SetLocalRectF({0, 30, 400, 230});
    }
    void GiveDetails()
    {
        tree->SetRowDetailsFunction(
            [this](const RowPtr& row) { return L"About " + entries[row.get()].name + L"\nand more"; },
            L"Details", L"Select one");
    }
    QPlainTextEdit& Text() { return *window.findChild<QPlainTextEdit*>(); }
    QWidget& Foot() { return *Text().parentWidget(); }
    std::string Said() { return Text().toPlainText().toStdString(); }
    /// The button of the notice.
    QPushButton& Command() { return *Foot().findChild<QPushButton*>(); }
    int RoomOfRows() const { return view.viewport()->height(); }
};

TEST_F(TreeFootTest, SaysMoreAboutTheRowThatIsSelected)
{
    Show();
    GiveDetails();
    EXPECT_EQ(Said(), "");
    EXPECT_EQ(Text().placeholderText(), "Select one");
    ClickCell(2, 1);
    EXPECT_EQ(Said(), "About Plug-In 2\nand more");
    Press(Qt::Key_Down);
    EXPECT_EQ(Said(), "About Plug-In 3\nand more");
    entries[tree->GetRowAt(3).get()].name = L"Another";
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        Append(L"One more");
    }
    EXPECT_EQ(Said(), "About Another\nand more") << "a fill may have changed it";
    tree->DeselectAll();
    EXPECT_EQ(Said(), "");
    ClickCell(2, 1);
    tree->RemoveAllRows();
    EXPECT_EQ(Said(), "");
}

TEST_F(TreeFootTest, TakesItsRoomFromTheListAndGivesItBack)
{
    Show();
    const int roomBefore = RoomOfRows();
    GiveDetails();
    EXPECT_TRUE(Foot().isVisible());
    EXPECT_EQ(RoomOfRows(), roomBefore - Foot().height());
    EXPECT_EQ(view.geometry().bottom() + 1, Foot().y());
    EXPECT_EQ(Foot().geometry().bottom() + 1, 260);
    EXPECT_EQ(tree->UI_GetLocalRectF(true), (ui::UI_Node::RectF{0, 30, 400, 230})) << "the place of both";
    tree->UI_SetLocalRectF({10, 20, 300, 600});
    EXPECT_EQ(Foot().geometry().bottom() + 1, 620);
    EXPECT_EQ(Foot().width(), 300);
    tree->UI_Show(false);
    EXPECT_FALSE(Foot().isVisible());
    tree->UI_Show(true);
    tree->SetRowDetailsFunction({});
    EXPECT_EQ(view.height(), 600);
}

TEST_F(TreeFootTest, HasThreeLinesAndFewerInALowList)
{
    GiveDetails();
    Show();
    const int line = Text().fontMetrics().lineSpacing();
    struct Case
    {
        float height;
        int lines;
    };
    for (const Case& each : {Case{600, 3}, Case{170, 2}, Case{120, 1}, Case{60, 1}}) {
        tree->UI_SetLocalRectF({0, 30, 400, each.height});
        QCoreApplication::processEvents();
        EXPECT_EQ(Text().height() / line, each.lines) << each.height;
        EXPECT_LE(Foot().height(), each.height);
    }
}

TEST_F(TreeFootTest, ThreeLinesAreWholeAndNeedNoScrollBarInAnyScript)
{
    const std::vector<std::wstring> texts{
        L"one\ntwo\nthree", L"\u5F62\u5F0F: VST\n/a/b\n\u30D5\u30A1\u30A4\u30EB", L"\u5F62\n\u5F0F\n\u5316",
        L"\u0E17\u0E35\u0E48\n\u0915\u094D\n\u00C5g"};
    std::size_t which = 0;
    tree->SetRowDetailsFunction([&](const RowPtr&) { return texts[which]; }, L"Details", L"Select one");
    tree->UI_SetLocalRectF({0, 30, 400, 400});
    Show();
    for (; which < texts.size(); ++which) {
        tree->DeselectAll();
        QCoreApplication::processEvents();
        EXPECT_EQ(Text().verticalScrollBar()->maximum(), 0) << "the prompt";
        ClickCell(static_cast<int>(which), 1);
        QCoreApplication::processEvents();
        EXPECT_EQ(Text().verticalScrollBar()->maximum(), 0) << which;
        EXPECT_FALSE(Text().verticalScrollBar()->isVisible()) << which;
        const QTextBlock last = Text().document()->lastBlock();
        const QTextLine line = last.layout()->lineAt(0);
        const QRectF block = Text().document()->documentLayout()->blockBoundingRect(last);
        EXPECT_LE(block.top() + line.height(), Text().viewport()->height()) << which;
    }
}

TEST_F(TreeFootTest, OneLineNeedsNoScrollBarInALowList)
{
    GiveDetails();
    tree->UI_SetLocalRectF({0, 30, 400, 60});
    Show();
    QCoreApplication::processEvents();
    EXPECT_EQ(Text().verticalScrollBar()->maximum(), 0);
    EXPECT_FALSE(Text().verticalScrollBar()->isVisible());
}

TEST_F(TreeFootTest, AsksToSelectARowOnlyWhereThereAreRows)
{
    GiveDetails();
    Show();
    EXPECT_EQ(Text().placeholderText(), "Select one");
    tree->RemoveAllRows();
    EXPECT_EQ(Text().placeholderText(), "");
    Fill(1);
    EXPECT_EQ(Text().placeholderText(), "Select one");
}

TEST_F(TreeFootTest, ItsScrollBarStandsOnTheSurfaceOfTheFootAndInsideTheFocusFrame)
{
    tree->SetRowDetailsFunction([](const RowPtr&) { return std::wstring(2000, L'x'); });
    Show();
    ClickCell(0, 1);
    Text().setFocus();
    QCoreApplication::processEvents();
    const QScrollBar& bar = *Text().verticalScrollBar();
    ASSERT_TRUE(bar.isVisible());
    const QImage foot = Foot().grab().toImage();
    const QPoint corner = bar.mapTo(&Foot(), QPoint(0, bar.height() - 1));
    EXPECT_EQ(foot.pixelColor(corner), pixmill::ToQt(skins::CurrentColors().window));
    for (const int x : {foot.width() - 1, foot.width() - 2})
        EXPECT_EQ(foot.pixelColor(x, corner.y()), pixmill::ToQt(skins::CurrentColors().focus)) << x;
}

TEST_F(TreeFootTest, ALongTextWrapsAndScrolls)
{
    tree->SetRowDetailsFunction([](const RowPtr&) { return std::wstring(2000, L'x'); });
    Show();
    ClickCell(0, 1);
    QCoreApplication::processEvents();
    EXPECT_FALSE(Text().horizontalScrollBar()->isVisible());
    EXPECT_GT(Text().verticalScrollBar()->maximum(), 0);
    EXPECT_TRUE(Text().verticalScrollBar()->isVisible());
}

TEST_F(TreeFootTest, TabReachesTheTextBehindTheListAndKeysThereLeaveTheListAlone)
{
    GiveDetails();
    Show();
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after) << "an empty text is no stop";
    Press(Qt::Key_Backtab);
    ClickCell(2, 1);
    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &Text());
    for (const Qt::Key key : {Qt::Key_P, Qt::Key_Down, Qt::Key_End, Qt::Key_PageDown})
        Press(key);
    EXPECT_EQ(SelectedNames(), Names{L"Plug-In 2"});
    EXPECT_EQ(Said(), "About Plug-In 2\nand more") << "nobody can write there";
    Press(Qt::Key_A, Qt::ControlModifier);
    Press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QApplication::clipboard()->text(), "About Plug-In 2\nand more");
    Press(Qt::Key_Tab);
    EXPECT_EQ(QApplication::focusWidget(), &after);
    Press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), &Text());
    Press(Qt::Key_Backtab);
    EXPECT_EQ(QApplication::focusWidget(), &view);
}

TEST_F(TreeFootTest, ShowsThatItHasTheFocus)
{
    GiveDetails();
    Show();
    ClickCell(2, 1);
    const QImage without = Foot().grab().toImage();
    Press(Qt::Key_Tab);
    EXPECT_NE(Foot().grab().toImage().pixel(1, Foot().height() / 2), without.pixel(1, Foot().height() / 2));
}

TEST_F(TreeFootTest, AScreenReaderReadsTheText)
{
    GiveDetails();
    Show();
    ClickCell(2, 1);
    QAccessibleInterface* const text = QAccessible::queryAccessibleInterface(&Text());
    EXPECT_EQ(text->text(QAccessible::Name), "Details");
    EXPECT_EQ(text->role(), QAccessible::EditableText);
    EXPECT_TRUE(text->state().readOnly);
    ASSERT_TRUE(text->textInterface());
    EXPECT_EQ(text->textInterface()->text(0, 15), "About Plug-In 2");
}

TEST_F(TreeFootTest, ANoticeStandsAboveTheTextWithItsCommand)
{
    Show();
    const int roomBefore = RoomOfRows();
    int calls = 0;
    tree->SetNotice({});
    EXPECT_FALSE(window.findChild<QPlainTextEdit*>()) << "there is nothing to say";
    tree->SetNotice(L"3 of 30 shown", L"Show all", [this, &calls] {
        ++calls;
        tree->SetNotice({});
    });
    EXPECT_LT(RoomOfRows(), roomBefore);
    EXPECT_EQ(Foot().findChild<QLabel*>()->text(), "3 of 30 shown");
    EXPECT_TRUE(Command().isVisible());
    GiveDetails();
    EXPECT_GE(Text().y(), Command().geometry().bottom());
    Press(Qt::Key_Tab);
    ASSERT_EQ(QApplication::focusWidget(), &Command());
    Press(Qt::Key_Space);
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(Command().isVisible());
    EXPECT_FALSE(Foot().findChild<QLabel*>()->isVisible());
    tree->SetNotice(L"Something", {}, {});
    EXPECT_FALSE(Command().isVisible()) << "it has no name";
}

TEST_F(TreeFootTest, GoesWithItsTree)
{
    GiveDetails();
    tree->SetNotice(L"One", L"Two", [] { FAIL() << "its tree is gone"; });
    Show();
    const QPointer<QPushButton> command = &Command();
    entries.clear();
    tree->RemoveAllRows();
    tree = utility::MakeIntrusive<UI_MultiColumnTree>(1U, 20.0F);
    if (command)
        command->click();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_FALSE(command);
}

} // namespace
} // namespace zetui::controls
