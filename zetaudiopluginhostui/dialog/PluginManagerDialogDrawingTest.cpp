// These tests look at the pixels of the cells in the manager dialog's lists.
#include <filesystem>

#include <QHeaderView>
#include <QImage>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QTableView>
#include <gmock/gmock.h>
#include <zetui/pixmill/Pixmill.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/drawing/CellDrawing.h"
#include "dialog/list/PluginListText.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using zetui::controls::UI_MultiColumnTree;
using zetui::pixmill::TextTruncation;

class CellPictures : public DialogFixture
{
  protected:
    static QTableView& View(const UI_MultiColumnTree& list)
    {
        return dynamic_cast<QTableView&>(WidgetOf(list));
    }
    /// The cell as it is on the screen, without the line below the row.
    static QImage Cell(const UI_MultiColumnTree& list, int place, int position)
    {
        QTableView& view = View(list);
        const int column = view.horizontalHeader()->logicalIndex(position);
        const QRect cell = view.visualRect(view.model()->index(place, column)).adjusted(0, 0, 0, -1);
        EXPECT_TRUE(view.viewport()->rect().contains(cell)) << position;
        return view.viewport()->grab(cell).toImage();
    }
    /// The picture that a cell of this size should show, with the same background.
    static QImage Drawn(const QImage& cell, const std::wstring& text,
                        TextTruncation truncation = TextTruncation::End, bool enabled = true)
    {
        namespace colors = zetui::skins::utilities;
        QImage image(cell.size(), cell.format());
        image.fill(cell.pixelColor(0, 0));
        QPainter painter(&image);
        zetui::pixmill::Pixmill context(&painter, nullptr);
        const zetui::pixmill::Font font{zetui::pixmill::ValidateFontName(zetui::ui::GetFontName(0)),
                                        zetui::ui::GetFontSize(0)};
        const float padding =
            zetui::skins::IsRunningV7OrBeyond() ? UI_MultiColumnTree::GetDefaultCellPadding().second : 6.0F;
        const float rowHeight = UI_MultiColumnTree::GetDefaultRowHeight();
        const float room = static_cast<float>(cell.width()) - 2 * padding;
        context.DrawString(zetui::pixmill::TruncateString(font, text, truncation, room), font,
                           enabled ? colors::GetDefaultTextColor() : colors::GetDefaultTextDisabledColor(),
                           padding, zetui::pixmill::GetFontBaseline(font, rowHeight));
        return image;
    }
    static bool IsEmpty(const QImage& image)
    {
        QImage empty(image.size(), image.format());
        empty.fill(image.pixelColor(0, 0));
        return image == empty;
    }
    /// A picture of the part that lies right of the checkbox.
    QImage RestOfTheFirstCell(int place) const
    {
        const QImage cell = Cell(PluginList(), place, 0);
        constexpr int checkbox = 40;
        return cell.copy(checkbox, 0, cell.width() - checkbox, cell.height());
    }
    void SetWidths(float name, float path) const
    {
        PluginList().GetHeaderRow()->SetColumnWidth(kColumnName, name);
        PluginList().GetHeaderRow()->SetColumnWidth(kColumnPath, path);
        HandleEvents();
    }
    void MoveColumn(unsigned column, int position) const
    {
        PluginList().GetHeaderRow()->MoveColumn(column, position);
        HandleEvents();
    }
    void OpenIn(zetui::skins::Skin skin)
    {
        CloseDialog();
        zetui::skins::SetSkin(skin);
        OpenDialog();
    }
};

const std::wstring longName = L"A name that is far too long for its column";
const std::wstring longPath = L"/a folder/with a long name/and a file.so";

TEST_F(CellPictures, EachCellShowsTheTextOfTheColumnThatStandsThereAndTheFirstNone)
{
    AddPlugin(L"Chorus", L"/a/1.so", L"2.0");
    for (const auto skin : zetui::skins::AllSkins()) {
        OpenIn(skin);
        SetWidths(140, 140);
        const std::wstring texts[] = {L"", L"Chorus", L"VST", L"Working", L"2.0", L"/a/1.so"};
        for (const int position : {1, 2, 3, 4, 5}) {
            const QImage cell = Cell(PluginList(), 0, position);
            EXPECT_EQ(cell, Drawn(cell, texts[position])) << position;
        }
        EXPECT_TRUE(IsEmpty(RestOfTheFirstCell(0)));
        MoveColumn(kColumnName, 2);
        const QImage moved = Cell(PluginList(), 0, 2);
        EXPECT_EQ(moved, Drawn(moved, L"Chorus"));
        const QImage neighbour = Cell(PluginList(), 0, 1);
        EXPECT_EQ(neighbour, Drawn(neighbour, L"VST"));
        MoveColumn(kColumnName, 0);
        EXPECT_TRUE(IsEmpty(RestOfTheFirstCell(0))) << "the first cell is the checkbox's, whatever its title";
    }
}

TEST_F(CellPictures, ATextThatIsTooLongIsCutAtItsEndAPathAndTheThirdCellInTheirMiddle)
{
    AddPlugin(longName, longPath);
    for (const auto skin : zetui::skins::AllSkins()) {
        OpenIn(skin);
        SetWidths(100, 120);
        const QImage name = Cell(PluginList(), 0, 1);
        EXPECT_EQ(name, Drawn(name, longName, TextTruncation::End));
        EXPECT_NE(name, Drawn(name, longName, TextTruncation::Middle));
        MoveColumn(kColumnPath, 4);
        const QImage path = Cell(PluginList(), 0, 4);
        EXPECT_EQ(path, Drawn(path, longPath, TextTruncation::End));
        EXPECT_EQ(path, Drawn(path, longPath, TextTruncation::Middle)) << "its end tells it apart";
        MoveColumn(kColumnName, 2);
        const QImage third = Cell(PluginList(), 0, 2);
        EXPECT_EQ(third, Drawn(third, longName, TextTruncation::Middle));
        EXPECT_NE(third, Drawn(third, longName, TextTruncation::End));
    }
}

TEST_F(CellPictures, TheTextsOfADisabledListHaveTheColourOfDisabledTextsAndTheOtherListsHaveNot)
{
    AddPlugin(L"Chorus", L"/a/1.so");
    // A folder that is not there would be grey.
    const std::wstring path = zettesting::ToWide(folder / "first");
    std::filesystem::create_directory(folder / "first");
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({path});
    OpenDialog();
    for (const bool pluginsEnabled : {false, true}) {
        PluginList().UI_SetDisabled(!pluginsEnabled);
        FolderList().UI_SetDisabled(pluginsEnabled);
        HandleEvents();
        const QImage name = Cell(PluginList(), 0, 1);
        EXPECT_EQ(name, Drawn(name, L"Chorus", TextTruncation::End, pluginsEnabled));
        EXPECT_NE(name, Drawn(name, L"Chorus", TextTruncation::End, !pluginsEnabled));
        const QImage folderCell = Cell(FolderList(), 0, 0);
        EXPECT_EQ(folderCell, Drawn(folderCell, path, TextTruncation::End, !pluginsEnabled));
        EXPECT_NE(folderCell, Drawn(folderCell, path, TextTruncation::End, pluginsEnabled));
    }
}

TEST_F(CellPictures, ADisabledPluginIsDrawnLikeAnEnabledOne)
{
    AddPlugin(L"Chorus", L"/a/1.so", L"2.0")->SetEnabled(false);
    for (const auto skin : zetui::skins::AllSkins()) {
        OpenIn(skin);
        SetWidths(140, 140);
        const std::wstring texts[] = {L"", L"Chorus", L"VST", L"Working", L"2.0", L"/a/1.so"};
        for (const int position : {1, 2, 3, 4, 5}) {
            const QImage cell = Cell(PluginList(), 0, position);
            EXPECT_EQ(cell, Drawn(cell, texts[position])) << position;
        }
    }
}

TEST_F(CellPictures, ARowOfTheFolderListWithoutFolderIsEmpty)
{
    OpenDialog();
    FolderList().CreateAndAppendRow();
    HandleEvents();
    EXPECT_TRUE(IsEmpty(Cell(FolderList(), 0, 0)));
}

TEST_F(CellPictures, TheFolderListShowsItsFoldersAndCutsThemInTheirMiddle)
{
    // Folders that are not there would be grey.
    const std::filesystem::path longFolder = folder / "a folder with a name that is longer than its cell is";
    std::filesystem::create_directory(longFolder);
    const std::wstring firstPath = zettesting::ToWide(folder / "."),
                       shownPath = zettesting::ToWide(longFolder);
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({firstPath, shownPath});
    for (const auto skin : zetui::skins::AllSkins()) {
        OpenIn(skin);
        const QImage first = Cell(FolderList(), 0, 0);
        EXPECT_EQ(first, Drawn(first, VstFolders().front()));
        FolderList().SetColumnWidth(0, 120);
        HandleEvents();
        const QImage second = Cell(FolderList(), 1, 0);
        EXPECT_EQ(second, Drawn(second, shownPath, TextTruncation::End));
        EXPECT_EQ(second, Drawn(second, shownPath, TextTruncation::Middle));
        EXPECT_NE(second, Drawn(second, shownPath, TextTruncation::Beginning));
    }
}

TEST_F(CellPictures, AFolderThatIsAwayIsGreyButWhereItsRowIsSelected)
{
    namespace colors = zetui::skins::utilities;
    // Grey on the colour of a selected row has less contrast than a text needs.
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({zettesting::ToWide(folder / "lllll")});
    for (const auto skin : zetui::skins::AllSkins()) {
        OpenIn(skin);
        const auto has = [&](const zetui::pixmill::Color& color) {
            const QImage cell = Cell(FolderList(), 0, 0);
            const QRgb looked = qRgb(color.red, color.green, color.blue);
            for (int y = 2; y < cell.height() - 2; ++y)
                for (int x = 2; x < cell.width() - 2; ++x)
                    if (cell.pixel(x, y) == looked)
                        return true;
            return false;
        };
        EXPECT_TRUE(WaitUntil([&] { return has(colors::GetDefaultTextDisabledColor()); }));
        EXPECT_FALSE(has(colors::GetDefaultTextColor()));
        FolderList().SelectRow(FolderList().GetRowAt(0).get(), true);
        HandleEvents();
        EXPECT_TRUE(has(colors::GetDefaultTextColor()));
        EXPECT_FALSE(has(colors::GetDefaultTextDisabledColor()));
    }
}

TEST_F(CellPictures, AListShowsWithItsFrameAloneThatItHasTheFocus)
{
    AddPlugin(L"Chorus", L"/a/1.so");
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/first"});
    OpenDialog();
    for (const UI_MultiColumnTree* const list : {&FolderList(), &PluginList()}) {
        QWidget& view = View(*list);
        QWidget& viewport = *View(*list).viewport();
        const auto corner = [&viewport] {
            return viewport.grab(QRect(0, viewport.height() - 8, 8, 8)).toImage();
        };
        const auto frame = [&view] { return view.grab(QRect(0, 40, 1, 1)).toImage(); };
        const QImage cornerBefore = corner(), frameBefore = frame();
        view.setFocus();
        HandleEvents();
        EXPECT_EQ(corner(), cornerBefore) << "a second ring";
        EXPECT_NE(frame(), frameBefore);
        FindBox().setFocus();
    }
}

} // namespace
} // namespace zetaudiopluginhostui
