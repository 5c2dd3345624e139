// These tests look at the manager dialog beyond its texts.
#include <QAccessible>
#include <QHeaderView>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTableView>
#include <QTest>
#include <gmock/gmock.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/drawing/CellDrawing.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetui::pixmill::GetTextWidth;
using zetui::pixmill::TextTruncation;
using zetui::skins::Skin;
using zetui::ui::UI_Node;

constexpr wchar_t ellipsis = L'\u2026';

class DialogLooks : public DialogFixture, public testing::WithParamInterface<Skin>
{
  protected:
    DialogLooks() : DialogFixture(GetParam()) {}

    QTableView& View() const { return dynamic_cast<QTableView&>(WidgetOf(PluginList())); }
    QHeaderView& Header() const { return *View().horizontalHeader(); }
    static QString DescriptionOf(const zetui::controls::UI_MultiColumnTree& list)
    {
        return QAccessible::queryAccessibleInterface(&WidgetOf(list))->text(QAccessible::Description);
    }
    QImage Cell(int place, int position) const
    {
        return View().viewport()->grab(View().visualRect(View().model()->index(place, position))).toImage();
    }
    static int CountOf(const QImage& image, const zetui::pixmill::Color& color)
    {
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) == qRgb(color.red, color.green, color.blue);
        return count;
    }
    QPoint Title(unsigned column) const
    {
        const int section = static_cast<int>(column) - 1;
        return {Header().sectionViewportPosition(section) + Header().sectionSize(section) / 2,
                Header().height() / 2};
    }
    void DragTitle(unsigned column, int toX) const
    {
        QWidget* const titles = Header().viewport();
        const QPoint from = Title(column);
        const QPoint to(toX, from.y());
        QTest::mousePress(titles, Qt::LeftButton, {}, from);
        for (int step = 1; step <= 10; ++step) {
            const QPoint at = from + (to - from) * step / 10;
            QMouseEvent move(QEvent::MouseMove, at, titles->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                             {});
            QCoreApplication::sendEvent(titles, &move);
        }
        QTest::mouseRelease(titles, Qt::LeftButton, {}, to);
        HandleEvents();
    }
    std::vector<unsigned> Columns() const
    {
        std::vector<unsigned> columns;
        for (int position = 0; position < 6; ++position)
            columns.push_back(PluginList().GetHeaderRow()->GetColumnAt(position));
        return columns;
    }
};

TEST_P(DialogLooks, ATextIsWholeBetweenThePaddingsAndHasAnEllipsisWhereItHasNoRoom)
{
    for (const std::wstring text : {L"A", L"Not Working", L"/usr/lib/vst/lsp-plugins/comp-delay-x2-stereo.so",
                                    L"\u97f3\u9891\u63d2\u4ef6.so"}) {
        const float padding = GetCellTextPadding();
        const float textWidth = GetTextWidth(GetCellFont(), text);
        for (const auto truncation : {TextTruncation::End, TextTruncation::Middle})
            for (float width = 2 * padding + 14; width < textWidth + 2 * padding + 20; ++width) {
                const std::wstring seen = ShownCellText({.text = text, .truncation = truncation}, width);
                EXPECT_LE(GetTextWidth(GetCellFont(), seen), width - 2 * padding) << width;
                EXPECT_EQ(seen.find(ellipsis) == std::wstring::npos, seen == text) << width;
                EXPECT_EQ(seen == text, textWidth <= width - 2 * padding) << width;
            }
    }
}

TEST_P(DialogLooks, TheStatusOfABannedPluginIsWholeBesideItsButtonInAFittedColumn)
{
    Ban(L"/a/bad.so");
    OpenDialog();
    const auto reload = ReloadButtonOf(L"bad.so");
    ASSERT_TRUE(reload);
    const float width = PluginList().GetHeaderRow()->GetColumnWidth(kColumnStatus);
    const CellText status{.text = L"Not Working", .end = reload->UI_GetLocalRectF(true).left};
    ASSERT_LT(*status.end, width);
    EXPECT_EQ(ShownCellText(status, width), status.text);
    EXPECT_NE(ShownCellText({.text = status.text, .end = *status.end - 20}, width), status.text);
}

TEST_P(DialogLooks, ThePathTakesTheFreeWidthAndThereIsAScrollBarOnlyWhereTheColumnsHaveNoRoom)
{
    AddManyPlugins(100);
    OpenDialog();
    int width = 0;
    for (unsigned column = kColumnEnabled; column <= kColumnPath; ++column)
        width += static_cast<int>(PluginList().GetHeaderRow()->GetColumnWidth(column));
    // Three fitted columns are shown with their second padding, and the path gives way down to 60.
    const auto padding =
        static_cast<int>(zetui::controls::UI_MultiColumnTree::GetDefaultCellPadding().second);
    const int least = width + 3 * padding - 240 + 60;
    const int beside = Window().width() - View().viewport()->width();
    for (const int room : {width, width + 1, width + 300, least, least - 1, least - 50, least + 1, width}) {
        Resize(room + beside, 470);
        EXPECT_EQ(View().viewport()->width(), room);
        EXPECT_EQ(Header().length(), std::max(least, room));
        EXPECT_EQ(View().horizontalScrollBar()->isVisible(), room < least) << room;
        EXPECT_EQ(PluginList().GetHeaderRow()->GetColumnWidth(kColumnPath), 240);
    }
}

TEST_P(DialogLooks, TheColumnsWithWidgetsKeepTheirPlaceAndTheOthersMoveBetweenThem)
{
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    OpenDialog();
    Resize(1200, 500);
    const std::vector<unsigned> before = Columns();
    DragTitle(kColumnEnabled, Title(kColumnType).x() + 10);
    DragTitle(kColumnStatus, Title(kColumnVersion).x() + 10);
    DragTitle(kColumnName, Title(kColumnVersion).x() + 10);
    DragTitle(kColumnType, Title(kColumnEnabled).x() - 10);
    DragTitle(kColumnPath, Title(kColumnName).x() - 10);
    EXPECT_EQ(Columns(), before);
    DragTitle(kColumnType, Title(kColumnName).x() - 10);
    EXPECT_THAT(Columns(), testing::ElementsAre(kColumnEnabled, kColumnType, kColumnName, kColumnStatus,
                                                kColumnVersion, kColumnPath));
    EXPECT_TRUE(CheckboxOf(L"One"));
    EXPECT_TRUE(HasReloadButton(L"bad.so"));
}

TEST_P(DialogLooks, EmptyListsSayWhyAndAFilledOneDoesNot)
{
    OpenDialog();
    EXPECT_TRUE(DescriptionOf(PluginList()).startsWith("No plug-ins yet."));
    EXPECT_TRUE(DescriptionOf(FolderList()).startsWith("No folders."));
    EXPECT_EQ(PluginList().GetRowCount(), 0) << "the text is no row";
    const QImage empty = View().viewport()->grab().toImage();
    EXPECT_NE(empty.copy(0, empty.height() / 4, empty.width(), empty.height() / 2),
              empty.copy(0, 0, empty.width(), empty.height() / 2));
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/first"});
    EXPECT_EQ(DescriptionOf(FolderList()), "");
    CloseDialog();
    AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    EXPECT_EQ(DescriptionOf(PluginList()), "");
    TypeIntoFindBox("two");
    EXPECT_EQ(DescriptionOf(PluginList()), "No plug-in matches the filter.");
    EXPECT_NE(View().viewport()->grab().toImage(), empty);
    QTest::keyClick(&FindBox(), Qt::Key_A, Qt::ControlModifier);
    QTest::keyClick(&FindBox(), Qt::Key_Delete);
    EXPECT_EQ(DescriptionOf(PluginList()), "");
}

TEST_P(DialogLooks, TheStatusOfABannedPluginStandsOnASurfaceOfItsOwn)
{
    AddPlugin(L"a", L"/a/1.so");
    Ban(L"/a/bad.so");
    for (const auto scheme : {zetui::skins::Scheme::Light, zetui::skins::Scheme::Dark}) {
        zetui::skins::SetScheme(scheme);
        OpenDialog();
        ASSERT_THAT(Names(), testing::ElementsAre(L"a", L"bad.so"));
        const auto surface = zetui::skins::utilities::GetFailureSurfaceColor();
        EXPECT_GT(CountOf(Cell(1, kStatusCell), surface), 300);
        EXPECT_EQ(CountOf(Cell(0, kStatusCell), surface), 0);
        EXPECT_EQ(CountOf(Cell(1, kStatusCell + 1), surface), 0);
        // The text itself has the colour of every other.
        EXPECT_GT(CountOf(Cell(1, kStatusCell), zetui::skins::utilities::GetDefaultTextColor()), 0);
        PluginList().UI_SetDisabled(true);
        HandleEvents();
        EXPECT_EQ(CountOf(Cell(1, kStatusCell), surface), 0) << "a disabled list is quiet";
        CloseDialog();
    }
}

TEST_P(DialogLooks, TheStatusEndsBeforeTheReloadButtonAlsoInANarrowColumn)
{
    Ban(L"/a/bad.so");
    OpenDialog();
    for (const int width : {100, 120, 200}) {
        PluginList().GetHeaderRow()->SetColumnWidth(kColumnStatus, static_cast<float>(width));
        HandleEvents();
        const QImage cell = Cell(0, kStatusCell);
        const int before = static_cast<int>(ReloadButtonOf(L"bad.so")->UI_GetLocalRectF(true).left) - 1;
        for (int y = 1; y < cell.height() - 1; ++y)
            EXPECT_EQ(cell.pixel(before, y), cell.pixel(0, y)) << width << ", " << y;
    }
}

TEST_P(DialogLooks, TheFilterLabelStandsBesideItsBox)
{
    OpenDialog();
    for (const int width : {1500, 1400, 1600}) {
        Resize(width, 600);
        ASSERT_TRUE(Node<UI_Node>(ids::kFindStaticText).UI_IsShown());
        const auto label = Node<UI_Node>(ids::kFindStaticText).UI_GetLocalRectF(true);
        const auto box = Node<UI_Node>(ids::kFindTextEdit).UI_GetLocalRectF(true);
        EXPECT_LE(label.left + label.width, box.left);
        EXPECT_GE(label.left + label.width, box.left - 10);
    }
}

TEST_P(DialogLooks, OKIsTheButtonThatReturnPressesAndLooksSo)
{
    OpenDialog();
    auto& ok = dynamic_cast<QPushButton&>(WidgetOf(Node<UI_Node>(ids::kOKButton)));
    ASSERT_TRUE(ok.isDefault());
    const QImage standingOut = ok.grab().toImage();
    ok.setDefault(false);
    if (GetParam() == Skin::Classic) {
        EXPECT_NE(ok.grab().toImage(), standingOut);
    } else {
        EXPECT_NE(standingOut.pixel(12, 3),
                  WidgetOf(Node<UI_Node>(ids::kCancelButton)).grab().toImage().pixel(12, 3));
    }
}

INSTANTIATE_TEST_SUITE_P(Skins, DialogLooks, testing::ValuesIn(zetui::skins::AllSkins()),
                         [](const auto& skin) { return NameOf(skin.param); });

} // namespace
} // namespace zetaudiopluginhostui
