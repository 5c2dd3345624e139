// Who may move and widen the columns of a tree, and what is there without rows.
#include <QAccessible>
#include <QImage>

#include "skins/SkinColors.h"
#include "testing/PrintSkin.h"
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

/// These tests run in each skin and scheme.
class TreeFocus : public TreeFixture,
                  public testing::WithParamInterface<std::tuple<skins::Skin, skins::Scheme>>
{
  protected:
    TreeFocus()
    {
        skins::SetSkin(std::get<0>(GetParam()));
        skins::SetScheme(std::get<1>(GetParam()));
        MakeColumns();
        tree->SetSupportUserSelectableCells(true);
    }
    /// The number of the list's pixels that people see change when the list gets the focus.
    int SeenOfTheFocus()
    {
        before.setFocus();
        const QImage without = view.grab().toImage();
        view.setFocus();
        EXPECT_TRUE(view.hasFocus());
        const QImage with = view.grab().toImage();
        int count = 0;
        for (int y = 0; y < with.height(); ++y)
            for (int x = 0; x < with.width(); ++x)
                count += skins::ContrastRatio(ColorAt(with, x, y), ColorAt(without, x, y)) >= 2;
        return count;
    }
    static pixmill::Color ColorAt(const QImage& image, int x, int y)
    {
        const QColor color = image.pixelColor(x, y);
        return {static_cast<std::uint8_t>(color.red()), static_cast<std::uint8_t>(color.green()),
                static_cast<std::uint8_t>(color.blue()), 255};
    }
};

TEST_P(TreeFocus, IsSeenWithoutRowsWithoutSelectionInARowAndInACell)
{
    Show();
    EXPECT_GE(SeenOfTheFocus(), 400) << "no rows";
    Fill(50);
    EXPECT_GE(SeenOfTheFocus(), 400) << "no selection";
    tree->SelectRow(tree->GetRowAt(2).get(), true);
    EXPECT_GE(SeenOfTheFocus(), 400) << "a row";
    const QImage row = view.grab().toImage();
    tree->SelectCell(tree->GetRowAt(2).get(), 1);
    EXPECT_GE(SeenOfTheFocus(), 200) << "a cell";
    EXPECT_NE(view.grab().toImage(), row);
}

INSTANTIATE_TEST_SUITE_P(All, TreeFocus,
                         testing::Combine(testing::ValuesIn(skins::AllSkins()),
                                          testing::Values(skins::Scheme::Light, skins::Scheme::Dark)),
                         [](const auto& given) {
                             return NameOf(std::get<0>(given.param)) +
                                    (std::get<1>(given.param) == skins::Scheme::Dark ? "Dark" : "Light");
                         });

} // namespace
} // namespace zetui::controls
