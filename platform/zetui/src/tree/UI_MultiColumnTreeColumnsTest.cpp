// Who may move and widen the columns of a tree, and what is there without rows.
#include <QAccessible>
#include <QHelpEvent>
#include <QImage>
#include <QToolTip>

#include "testing/TreeFixture.h"

namespace zetui::controls {
namespace {

class TreeColumns : public TreeFixture
{
  protected:
    TreeColumns()
    {
        MakeColumns();
        titles = view.horizontalHeader();
    }
    QPoint Title(unsigned id) const
    {
        const int column = static_cast<int>(id) - 1;
        return {titles->sectionViewportPosition(column) + titles->sectionSize(column) / 2,
                titles->height() / 2};
    }
    QPoint RightEdge(unsigned id) const
    {
        const int column = static_cast<int>(id) - 1;
        return {titles->sectionViewportPosition(column) + titles->sectionSize(column) - 1,
                titles->height() / 2};
    }
    std::vector<unsigned> Order() const
    {
        return {header->GetColumnAt(0), header->GetColumnAt(1), header->GetColumnAt(2)};
    }
    int ShownWidth(unsigned id) const { return titles->sectionSize(static_cast<int>(id) - 1); }
    int FreeFor(unsigned id) const
    {
        return view.viewport()->width() - titles->sectionPosition(static_cast<int>(id) - 1);
    }
    bool Scrolls() const { return view.horizontalScrollBar()->maximum() > 0; }
    void Widen(int width)
    {
        window.resize(width, 300);
        view.resize(width, 230);
        QCoreApplication::processEvents();
    }

    QHeaderView* titles;
};

TEST_F(TreeColumns, TheLastOneTakesTheFreeWidthAndGivesItBack)
{
    Fill(3);
    Show();
    EXPECT_EQ(ShownWidth(versionColumn), 100) << "only where the tree is told to";
    header->SetLastColumnTakesFreeWidth(true);
    for (const int width : {400, 600, 302, 500}) {
        Widen(width);
        EXPECT_EQ(ShownWidth(versionColumn), std::max(100, FreeFor(versionColumn))) << width;
        EXPECT_EQ(header->GetColumnWidth(versionColumn), 100) << "its own width stays";
        EXPECT_FALSE(Scrolls()) << width;
    }
    Widen(250);
    EXPECT_EQ(ShownWidth(versionColumn), 100) << "never less than its own";
    EXPECT_TRUE(Scrolls());
    Widen(500);
    header->SetLastColumnTakesFreeWidth(false);
    EXPECT_EQ(ShownWidth(versionColumn), 100);
}

TEST_F(TreeColumns, AScrollBarTakesItsPlaceFromTheFreeWidth)
{
    header->SetLastColumnTakesFreeWidth(true);
    Show();
    const int withoutBar = ShownWidth(versionColumn);
    Fill(100);
    QCoreApplication::processEvents();
    ASSERT_TRUE(view.verticalScrollBar()->isVisible());
    EXPECT_LT(ShownWidth(versionColumn), withoutBar);
    EXPECT_EQ(ShownWidth(versionColumn), FreeFor(versionColumn));
    EXPECT_FALSE(Scrolls());
}

TEST_F(TreeColumns, WhicheverIsTheLastOneTakesTheFreeWidth)
{
    header->SetLastColumnTakesFreeWidth(true);
    Show();
    header->MoveColumn(versionColumn, 1);
    EXPECT_EQ(ShownWidth(versionColumn), 100);
    EXPECT_EQ(ShownWidth(nameColumn), FreeFor(nameColumn));
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 150);
    Widen(600);
    header->AppendColumn(L"Path", 4);
    EXPECT_EQ(ShownWidth(nameColumn), 150);
    EXPECT_EQ(ShownWidth(4), FreeFor(4));
}

TEST_F(TreeColumns, TheUserCanMakeTheLastOneWiderButNotLeaveItsRestEmpty)
{
    header->SetLastColumnTakesFreeWidth(true);
    Show();
    const int free = FreeFor(versionColumn);
    const QPoint edge = RightEdge(versionColumn);
    Drag(titles->viewport(), edge, edge - QPoint(60, 0));
    EXPECT_EQ(ShownWidth(versionColumn), free);
    EXPECT_EQ(header->GetColumnWidth(versionColumn), 100) << "there is no need to make it less";
    Drag(titles->viewport(), edge, edge + QPoint(30, 0));
    EXPECT_EQ(header->GetColumnWidth(versionColumn), free + 30);
    QCoreApplication::processEvents();
    EXPECT_TRUE(WaitUntil([this] { return Scrolls(); }));
    header->SetColumnWidth(versionColumn, 80);
    EXPECT_EQ(header->GetColumnWidth(versionColumn), 80);
    EXPECT_EQ(ShownWidth(versionColumn), free);
    header->SetColumnWidth(nameColumn, 200);
    EXPECT_EQ(ShownWidth(versionColumn), free - 50) << "the others take from it";
}

TEST_F(TreeColumns, ADoubleClickFitsTheLastOneToItsOwnWidth)
{
    header->SetLastColumnTakesFreeWidth(true);
    header->SetColumnBestFitWidthCallback([](unsigned) { return 130.0F; });
    Show();
    QTest::mouseDClick(titles->viewport(), Qt::LeftButton, {}, RightEdge(versionColumn));
    EXPECT_EQ(header->GetColumnWidth(versionColumn), 130);
    EXPECT_EQ(ShownWidth(versionColumn), FreeFor(versionColumn));
}

TEST_F(TreeColumns, OneThatKeepsItsPlaceCannotBeDraggedNorPassed)
{
    header->SetColumnKeepsPlace(onColumn, true);
    header->SetColumnKeepsPlace(77, true);
    Show();
    const std::vector<unsigned> order = Order();
    Drag(titles->viewport(), Title(onColumn), Title(versionColumn) + QPoint(10, 0));
    EXPECT_EQ(Order(), order);
    Drag(titles->viewport(), Title(versionColumn), Title(onColumn) - QPoint(10, 0));
    EXPECT_EQ(Order(), order);
    Drag(titles->viewport(), Title(versionColumn), Title(nameColumn) - QPoint(20, 0));
    EXPECT_EQ(Order(), (std::vector<unsigned>{onColumn, versionColumn, nameColumn})) << "the others can";
    EXPECT_EQ(header->GetSortColumn(), 0U);
    QTest::mouseClick(titles->viewport(), Qt::LeftButton, {}, Title(onColumn));
    EXPECT_EQ(header->GetSortColumn(), onColumn) << "it still sorts";
    header->MoveColumn(onColumn, 2);
    EXPECT_EQ(header->GetColumnAt(2), onColumn) << "programs move what they like";
    header->SetColumnKeepsPlace(onColumn, false);
    Drag(titles->viewport(), Title(onColumn), Title(versionColumn) - QPoint(20, 0));
    EXPECT_EQ(header->GetColumnAt(0), onColumn);
}

TEST_F(TreeColumns, OneGivesWayAndComesBackUnlessTheUserHasChosenItsWidth)
{
    header->SetColumnGivesWay(versionColumn, 40);
    header->SetLastColumnTakesFreeWidth(true);
    header->SetColumnWidth(versionColumn, 300);
    Show();
    Widen(320);
    EXPECT_EQ(ShownWidth(nameColumn), 150);
    EXPECT_EQ(ShownWidth(versionColumn), FreeFor(versionColumn));
    EXPECT_FALSE(Scrolls());
    EXPECT_EQ(header->GetColumnWidth(versionColumn), 300) << "its own width stays";
    Widen(220);
    EXPECT_EQ(ShownWidth(versionColumn), 40);
    EXPECT_TRUE(WaitUntil([this] { return Scrolls(); }));
    Widen(600);
    EXPECT_EQ(ShownWidth(versionColumn), FreeFor(versionColumn));
    Widen(400);
    const QPoint edge = RightEdge(nameColumn);
    Drag(titles->viewport(), edge, edge + QPoint(300, 0));
    EXPECT_EQ(ShownWidth(nameColumn), 450) << "the user wants it so wide";
}

TEST_F(TreeColumns, AFittedOneIsShownWithItsSecondPadding)
{
    Show();
    const int padding = static_cast<int>(UI_MultiColumnTree::GetDefaultCellPadding().second);
    header->FitColumn(nameColumn, 120);
    EXPECT_EQ(header->GetColumnWidth(nameColumn), 120);
    EXPECT_EQ(ShownWidth(nameColumn), 120 + padding);
    header->SetColumnWidth(nameColumn, 130);
    EXPECT_EQ(ShownWidth(nameColumn), 130);
    header->FitColumn(77, 100);
    EXPECT_EQ(header->GetColumnWidth(77), 0);
}

TEST_F(TreeColumns, ATitleThatIsCutShowsItselfWholeInATooltip)
{
    const std::wstring longTitle = L"A title that is longer than its column";
    header->AppendColumn(longTitle, 4);
    header->SetColumnWidth(4, 60);
    Show();
    const auto pointAt = [this](unsigned id) {
        QHelpEvent help(QEvent::ToolTip, Title(id), titles->viewport()->mapToGlobal(Title(id)));
        QApplication::sendEvent(titles->viewport(), &help);
    };
    pointAt(nameColumn);
    EXPECT_FALSE(QToolTip::isVisible()) << "that title has room";
    pointAt(4);
    EXPECT_TRUE(QToolTip::isVisible());
    EXPECT_EQ(QToolTip::text().toStdWString(), longTitle);
    pointAt(nameColumn);
    EXPECT_TRUE(WaitUntil([] { return !QToolTip::isVisible(); }));
    header->SetColumnWidth(4, 390);
    pointAt(4);
    EXPECT_FALSE(QToolTip::isVisible());
}

TEST_F(TreeColumns, OneThatIsDraggedShowsWhereItWouldGoAndWhereItMayNot)
{
    header->SetColumnKeepsPlace(onColumn, true);
    Show();
    QWidget* const pad = titles->viewport();
    const auto line = [&]() -> QWidget* {
        for (QObject* const child : pad->children())
            if (auto* const widget = qobject_cast<QWidget*>(child); widget && widget->isVisible())
                return widget;
        return nullptr;
    };
    const auto moveTo = [&](const QPoint& at) {
        SendMouse(pad, QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton);
    };
    SendMouse(pad, QEvent::MouseButtonPress, Title(versionColumn), Qt::LeftButton, Qt::LeftButton);
    moveTo(Title(versionColumn) - QPoint(20, 0));
    EXPECT_EQ(pad->cursor().shape(), Qt::ClosedHandCursor);
    EXPECT_FALSE(line()) << "it would stay";
    moveTo(Title(nameColumn) - QPoint(10, 0));
    EXPECT_EQ(pad->cursor().shape(), Qt::ClosedHandCursor);
    ASSERT_TRUE(line());
    EXPECT_NEAR(line()->geometry().center().x(), titles->sectionViewportPosition(nameColumn - 1), 2);
    moveTo(Title(onColumn) - QPoint(10, 0));
    EXPECT_EQ(pad->cursor().shape(), Qt::ForbiddenCursor);
    EXPECT_FALSE(line());
    const std::vector<unsigned> order = Order();
    int moves = 0;
    QObject::connect(titles, &QHeaderView::sectionMoved, titles, [&moves] { ++moves; });
    SendMouse(pad, QEvent::MouseButtonRelease, Title(onColumn) - QPoint(10, 0), Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(Order(), order);
    EXPECT_EQ(moves, 0) << "nothing snaps back";
    EXPECT_NE(pad->cursor().shape(), Qt::ForbiddenCursor);
    EXPECT_EQ(header->GetSortColumn(), 0U) << "a drag is no click";
    SendMouse(pad, QEvent::MouseButtonPress, Title(onColumn), Qt::LeftButton, Qt::LeftButton);
    moveTo(Title(nameColumn));
    EXPECT_EQ(pad->cursor().shape(), Qt::ForbiddenCursor) << "it keeps its place";
    SendMouse(pad, QEvent::MouseButtonRelease, Title(nameColumn), Qt::LeftButton, Qt::NoButton);
    EXPECT_EQ(Order(), order);
}

TEST_F(TreeColumns, ACutTextIsInTheTooltipBeforeTheCellsOwn)
{
    Fill(2);
    tree->SetCutTextFunction([this](const RowPtr& row, int position, float width) {
        return header->GetColumnAt(position) == nameColumn && width < 100 ? entries[row.get()].name : L"";
    });
    tree->SetCellTooltipFunction([](const RowPtr&, int) { return std::wstring(L"more"); });
    Show();
    const auto tooltip = [this] { return view.model()->index(1, 1).data(Qt::ToolTipRole).toString(); };
    EXPECT_TRUE(tooltip().contains(QStringLiteral("more")));
    EXPECT_FALSE(tooltip().contains(QStringLiteral("Plug-In")));
    header->SetColumnWidth(nameColumn, 60);
    EXPECT_TRUE(tooltip().contains(QStringLiteral("Plug-In")));
    EXPECT_LT(tooltip().indexOf(QStringLiteral("Plug-In")), tooltip().indexOf(QStringLiteral("more")));
    EXPECT_FALSE(view.model()
                     ->index(1, 1)
                     .data(Qt::AccessibleDescriptionRole)
                     .toString()
                     .contains(QStringLiteral("Plug-In")))
        << "a screen reader has read the cell's text already";
}

class TreeWithoutRows : public TreeColumns
{
  protected:
    QString Description()
    {
        return QAccessible::queryAccessibleInterface(&view)->text(QAccessible::Description);
    }
};

TEST_F(TreeWithoutRows, SaysWhyThereAreNone)
{
    Show();
    const QImage blank = view.viewport()->grab().toImage();
    tree->SetEmptyText(L"Nothing here");
    EXPECT_NE(view.viewport()->grab().toImage(), blank);
    EXPECT_EQ(Description(), "Nothing here");
    EXPECT_EQ(tree->GetRowCount(), 0) << "it is no row";
    EXPECT_EQ(view.model()->rowCount(), 0);
    Fill(1);
    EXPECT_EQ(Description(), "");
    tree->SetEmptyText(L"");
    const QImage filled = view.viewport()->grab().toImage();
    tree->SetEmptyText(L"Nothing here");
    EXPECT_EQ(view.viewport()->grab().toImage(), filled) << "only where there are none";
    tree->RemoveAllRows();
    EXPECT_EQ(Description(), "Nothing here");
    {
        const ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        Fill(2);
        tree->RemoveAllRows();
    }
    EXPECT_EQ(Description(), "Nothing here");
    tree->SetEmptyText(L"");
    view.clearFocus();
    EXPECT_EQ(view.viewport()->grab().toImage().pixel(5, 5), blank.pixel(5, 5));
}

} // namespace
} // namespace zetui::controls
