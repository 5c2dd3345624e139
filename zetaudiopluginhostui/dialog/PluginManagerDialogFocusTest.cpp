// These tests press keys in the manager dialog and see what acts on them, and where the focus is then.
#include <QAbstractScrollArea>
#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogScansFixture.h"
#include <zettesting/Patience.h>

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using zettesting::ToWide;
using zetui::dialogs::UI_DialogViewContainer;
using zetui::ui::UI_Node;

class DialogFocus : public DialogScansFixture
{
  protected:
    static void Key(int key, Qt::KeyboardModifiers modifiers = {})
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), static_cast<Qt::Key>(key), modifiers);
        HandleEvents();
    }
    static void Hold(int key)
    {
        QKeyEvent repeated(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QApplication::sendEvent(QApplication::focusWidget(), &repeated);
        HandleEvents();
    }
    /// Without a screen nobody activates the window again that a closed window leaves behind.
    void ActivateAgain() const
    {
        Window().activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    }
    void Focus(const char* id) const { WidgetOf(Node<UI_Node>(id)).setFocus(); }
    bool HasFocus(const char* id) const { return WidgetOf(Node<UI_Node>(id)).hasFocus(); }
    bool IsOpen() const { return TheDialog().UI_IsShown(); }
    std::vector<std::wstring> SelectedFolders() const
    {
        std::vector<std::wstring> paths;
        for (const auto& row : FolderList().GetSelectedRows())
            paths.push_back(Folders()[static_cast<std::size_t>(FolderList().GetPlaceOfRow(row.get()))]);
        return paths;
    }
    std::vector<std::wstring> SelectedPlugins() const
    {
        std::vector<std::wstring> names;
        for (const auto& row : PluginList().GetSelectedRows())
            names.push_back(Names()[static_cast<std::size_t>(PluginList().GetPlaceOfRow(row.get()))]);
        return names;
    }
    void AddFolders(const std::vector<std::wstring>& paths) const
    {
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories(paths);
    }
};

/// A folder with this system's separators.
std::wstring AsShown(std::filesystem::path folder)
{
    return ToWide(folder.make_preferred());
}

TEST_F(DialogFocus, TheListHasTheFocusFirstSoThatReturnDoesWhatNobodyWonders)
{
    AddPlugin(L"One", L"/a/1.so");
    AddPlugin(L"Two", L"/a/2.so");
    const auto run = [this](const std::vector<Qt::Key>& keys) {
        MakeDialog();
        QTimer::singleShot(0, &Window(), [&] {
            ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
            EXPECT_TRUE(HasFocus(ids::kPluginList))
                << QApplication::focusWidget()->objectName().toStdString();
            for (const Qt::Key key : keys)
                Key(key);
            TheDialog().Close(UI_DialogViewContainer::kCancel);
        });
        return dialog->RunModal();
    };
    EXPECT_EQ(run({Qt::Key_Return}), UI_DialogViewContainer::kOK);
    EXPECT_EQ(run({Qt::Key_Down}), UI_DialogViewContainer::kCancel);
    EXPECT_THAT(SelectedPlugins(), ElementsAre(L"One")) << "the arrow keys go through the rows at once";
}

TEST_F(DialogFocus, ReturnPressesTheButtonThatHasTheFocus)
{
    const auto info = AddPlugin(L"One", L"/a/1.so");
    OpenDialog();
    Focus(ids::kDisableAllButton);
    Key(Qt::Key_Return);
    EXPECT_FALSE(info->IsEnabled());
    Focus(ids::kEnableAllButton);
    Key(Qt::Key_Enter);
    EXPECT_TRUE(info->IsEnabled());
    EXPECT_TRUE(IsOpen());
    Focus(ids::kUpdateButton);
    Key(Qt::Key_Return);
    EXPECT_EQ(shown->progressDialogs, 1);
    EXPECT_TRUE(IsOpen());
    ActivateAgain();
    EXPECT_TRUE(HasFocus(ids::kUpdateButton));
    Focus(ids::kCancelButton);
    Key(Qt::Key_Return);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kCancel);
}

TEST_F(DialogFocus, ReturnOnAReloadButtonReloads)
{
    Ban(Copy("good/vst2_effect", "effect"));
    OpenDialog();
    WidgetOf(*ReloadButtonOf(Names().front())).setFocus();
    Key(Qt::Key_Return);
    EXPECT_FALSE(AnythingIsBanned());
    EXPECT_TRUE(IsOpen());
}

TEST_F(DialogFocus, ReturnInTheListAndOnACheckboxIsOK)
{
    AddPlugin(L"One", L"/a/1.so");
    for (const char* id : {ids::kPluginList, ids::kDirectoryList, ids::kRescanExisting}) {
        OpenDialog();
        Focus(id);
        Key(Qt::Key_Return);
        EXPECT_FALSE(IsOpen()) << id;
        EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kOK) << id;
        CloseDialog();
    }
}

TEST_F(DialogFocus, ReturnAndDownInTheFindBoxGoToTheRows)
{
    AddPlugin(L"Alpha", L"/a/1.so");
    AddPlugin(L"Beta", L"/a/2.so");
    OpenDialog();
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_Enter), int(Qt::Key_Down)}) {
        PluginList().DeselectAll();
        FindBox().clear();
        TypeIntoFindBox("be");
        Key(key);
        EXPECT_TRUE(IsOpen());
        EXPECT_TRUE(HasFocus(ids::kPluginList)) << key;
        EXPECT_THAT(SelectedPlugins(), ElementsAre(L"Beta")) << key;
    }
    Hold(Qt::Key_Return);
    EXPECT_TRUE(IsOpen()) << "the Return that went to the list does not close the window";
}

TEST_F(DialogFocus, WhereTheFindBoxLetsNothingThroughTheFocusStaysThere)
{
    AddPlugin(L"Alpha", L"/a/1.so");
    OpenDialog();
    TypeIntoFindBox("zzz");
    for (const int key : {int(Qt::Key_Return), int(Qt::Key_Down)}) {
        Key(key);
        EXPECT_TRUE(FindBox().hasFocus());
        EXPECT_TRUE(IsOpen());
    }
}

TEST_F(DialogFocus, DownWithAnotherKeyIsTheFindBoxsOwn)
{
    AddPlugin(L"Alpha", L"/a/1.so");
    OpenDialog();
    FindBox().setFocus();
    Key(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_TRUE(FindBox().hasFocus());
}

TEST_F(DialogFocus, EscapeInAFindBoxWithTextClearsItAndThenItIsCancel)
{
    AddPlugin(L"Alpha", L"/a/1.so");
    AddPlugin(L"Beta", L"/a/2.so");
    OpenDialog();
    TypeIntoFindBox("be");
    ASSERT_THAT(Names(), ElementsAre(L"Beta"));
    Key(Qt::Key_Escape);
    EXPECT_TRUE(IsOpen());
    EXPECT_TRUE(FindBox().hasFocus());
    EXPECT_THAT(Names(), ElementsAre(L"Alpha", L"Beta"));
    Hold(Qt::Key_Escape);
    EXPECT_TRUE(IsOpen()) << "the Escape that clears the box does not close the window";
    Key(Qt::Key_Escape);
    EXPECT_FALSE(IsOpen());
    EXPECT_EQ(dialog->GetResult(), UI_DialogViewContainer::kCancel);
    OpenDialog();
    TypeIntoFindBox("be");
    Focus(ids::kPluginList);
    Key(Qt::Key_Escape);
    EXPECT_FALSE(IsOpen()) << "Escape outside of the box";
}

TEST_F(DialogFocus, AfterAReloadTheFocusIsInThePluginsRow)
{
    AddPlugin(L"Zulu", L"/z/zulu.so");
    AddPlugin(L"Alpha", L"/z/alpha.so");
    const std::wstring path = Copy("good/vst2_effect", "effect");
    Ban(path);
    OpenDialog();
    const std::wstring banned = zetcore::filesupport::File(path).GetTitle();
    WidgetOf(*ReloadButtonOf(banned)).setFocus();
    Key(Qt::Key_Space);
    ASSERT_FALSE(AnythingIsBanned());
    ActivateAgain();
    EXPECT_TRUE(HasFocus(ids::kPluginList));
    ASSERT_EQ(PluginList().GetSelectedRows().size(), 1u);
    const auto place =
        static_cast<std::size_t>(PluginList().GetPlaceOfRow(PluginList().GetSelectedRows().front().get()));
    EXPECT_EQ(ColumnTexts(6)[place], path);
}

TEST_F(DialogFocus, AReloadThatFailsLeavesTheFocusOnTheReloadButton)
{
    AddPlugin(L"Alpha", L"/z/alpha.so");
    const std::wstring path = Copy("bad/crash_on_load", "crash");
    Ban(path);
    Ban(L"/z/other.so");
    OpenDialog();
    const std::wstring name = zetcore::filesupport::File(path).GetTitle();
    Press(*ReloadButtonOf(name));
    ActivateAgain();
    ASSERT_TRUE(HasReloadButton(name));
    EXPECT_EQ(QApplication::focusWidget(), &WidgetOf(*ReloadButtonOf(name)));
    EXPECT_THAT(SelectedPlugins(), ElementsAre(name));
}

TEST_F(DialogFocus, AfterAReloadOfAPluginThatIsGoneTheFocusIsOnTheRowInItsPlace)
{
    for (const char* title : {"a", "b", "c"}) {
        Ban(Copy("good/vst2_effect", title));
        std::filesystem::remove(plugins / (title + std::string(zettesting::ModuleSuffix())));
    }
    OpenDialog();
    const auto names = Names();
    ASSERT_EQ(names.size(), 3u);
    for (const auto& [pressed, next] : {std::pair(names[1], names[2]), std::pair(names[2], names[0])}) {
        WidgetOf(*ReloadButtonOf(pressed)).setFocus();
        Key(Qt::Key_Return);
        EXPECT_THAT(SelectedPlugins(), ElementsAre(next));
        EXPECT_TRUE(HasFocus(ids::kPluginList));
    }
    WidgetOf(*ReloadButtonOf(names[0])).setFocus();
    Key(Qt::Key_Return);
    EXPECT_EQ(PluginList().GetRowCount(), 0);
    EXPECT_TRUE(HasFocus(ids::kPluginList));
}

TEST_F(DialogFocus, AfterRemovingAFolderTheFocusIsOnTheNextOne)
{
    AddFolders({L"/1", L"/2", L"/3"});
    OpenDialog();
    ASSERT_EQ(Folders().size(), 4u);
    FolderList().SelectRow(FolderList().GetRowAt(1).get(), true);
    for (const std::wstring& next : {AsShown("/2"), AsShown("/3")}) {
        Focus(ids::kRemoveDirectoryButton);
        Key(Qt::Key_Space);
        EXPECT_TRUE(HasFocus(ids::kDirectoryList));
        EXPECT_THAT(SelectedFolders(), ElementsAre(next));
        EXPECT_TRUE(Node<UI_Node>(ids::kRemoveDirectoryButton).UI_IsEnabled());
    }
    Press(ids::kRemoveDirectoryButton);
    EXPECT_THAT(SelectedFolders(), ElementsAre(ToWide(plugins))) << "the last one went";
    Press(ids::kRemoveDirectoryButton);
    EXPECT_TRUE(Folders().empty());
    EXPECT_TRUE(HasFocus(ids::kDirectoryList)) << "and no other button";
    EXPECT_FALSE(Node<UI_Node>(ids::kRemoveDirectoryButton).UI_IsEnabled());
}

TEST_F(DialogFocus, DeleteRemovesTheSelectedFolders)
{
    AddFolders({L"/1", L"/2", L"/3"});
    OpenDialog();
    Focus(ids::kDirectoryList);
    Key(Qt::Key_Delete);
    EXPECT_EQ(VstFolders().size(), 4u) << "no folder is selected";
    FolderList().SelectRow(FolderList().GetRowAt(1).get(), true);
    FolderList().SelectRow(FolderList().GetRowAt(2).get(), true);
    Key(Qt::Key_Delete, Qt::ControlModifier);
    EXPECT_EQ(VstFolders().size(), 4u) << "another shortcut";
    Key(Qt::Key_Delete);
    EXPECT_THAT(VstFolders(), ElementsAre(ToWide(plugins), AsShown("/3")));
    EXPECT_THAT(SelectedFolders(), ElementsAre(AsShown("/3")));
    EXPECT_TRUE(HasFocus(ids::kDirectoryList));
    Focus(ids::kPluginList);
    Key(Qt::Key_Delete);
    EXPECT_EQ(VstFolders().size(), 2u) << "the plug-in list deletes nothing";
}

TEST_F(DialogFocus, AControlThatIsHiddenForLackOfRoomLeavesTheFocusToTheList)
{
    AddPlugin(L"Alpha", L"/a/1.so");
    for (const char* id : {ids::kFindTextEdit, ids::kDisableAllButton}) {
        OpenDialog();
        Resize(1300, 500);
        Focus(id);
        ASSERT_TRUE(HasFocus(id));
        Resize(400, 400);
        ASSERT_FALSE(Node<UI_Node>(id).UI_IsShown()) << id;
        EXPECT_TRUE(HasFocus(ids::kPluginList)) << id;
        CloseDialog();
    }
}

TEST_F(DialogFocus, SpaceActsOnTheFramedRow)
{
    const auto one = AddPlugin(L"Alpha", L"/a/1.so");
    const auto two = AddPlugin(L"Beta", L"/a/2.so");
    OpenDialog();
    Focus(ids::kPluginList);
    ASSERT_FALSE(PluginList().IsAnyRowSelected());
    Key(Qt::Key_Space);
    EXPECT_FALSE(one->IsEnabled()) << "the frame is on the first row in sight";
    EXPECT_TRUE(two->IsEnabled());
    EXPECT_FALSE(CheckboxOf(L"Alpha")->IsChecked());
    EXPECT_TRUE(HasFocus(ids::kPluginList));
    Key(Qt::Key_Space);
    EXPECT_TRUE(one->IsEnabled());
}

TEST_F(DialogFocus, SpaceOnABannedRowReloadsIt)
{
    Ban(Copy("good/vst2_effect", "effect"));
    OpenDialog();
    Focus(ids::kPluginList);
    Key(Qt::Key_Space);
    EXPECT_FALSE(AnythingIsBanned());
    ActivateAgain();
    EXPECT_TRUE(HasFocus(ids::kPluginList));
}

TEST_F(DialogFocus, F5AndControlRScan)
{
    OpenDialog();
    Focus(ids::kPluginList);
    Key(Qt::Key_F5);
    EXPECT_EQ(shown->progressDialogs, 1);
    ActivateAgain();
    EXPECT_TRUE(HasFocus(ids::kPluginList));
    FindBox().setFocus();
    Key(Qt::Key_R, Qt::ControlModifier);
    EXPECT_EQ(shown->progressDialogs, 2);
    ActivateAgain();
    Hold(Qt::Key_F5);
    Key(Qt::Key_F5, Qt::ShiftModifier);
    Key(Qt::Key_R, Qt::ControlModifier | Qt::ShiftModifier);
    Key(Qt::Key_R);
    EXPECT_EQ(shown->progressDialogs, 2) << "kept down, or other keys";
    Node<UI_Node>(ids::kUpdateButton).UI_SetDisabled(true);
    Key(Qt::Key_F5);
    EXPECT_EQ(shown->progressDialogs, 2) << "the button is disabled";
}

TEST_F(DialogFocus, ADoubleClickOnARowTogglesNothing)
{
    const auto info = AddPlugin(L"Alpha", L"/a/1.so");
    OpenDialog();
    auto& view = WidgetOf(PluginList());
    auto* const viewport = dynamic_cast<QAbstractScrollArea&>(view).viewport();
    const auto row = PluginList().GetRowAt(0);
    for (int cell = 0; cell < 6; ++cell) {
        const QWidget& cellView = WidgetOf(*row->GetCellView(cell));
        const QPoint at = cellView.mapTo(viewport, cellView.rect().center());
        QWidget* const target = viewport->childAt(at) ? viewport->childAt(at) : viewport;
        const QPoint there = target->mapFrom(viewport, at);
        QTest::mouseClick(target, Qt::LeftButton, {}, there);
        QTest::mouseDClick(target, Qt::LeftButton, {}, there);
        QTest::mouseRelease(target, Qt::LeftButton, {}, there);
        HandleEvents();
        EXPECT_TRUE(info->IsEnabled()) << cell;
    }
    EXPECT_TRUE(IsOpen());
    EXPECT_EQ(shown->progressDialogs, 0);
}

} // namespace
} // namespace zetaudiopluginhostui
