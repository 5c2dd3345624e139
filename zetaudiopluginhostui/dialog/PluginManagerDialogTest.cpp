// These tests check how the manager dialog is put together, and what it remembers.
#include "dialog/PluginManagerDialog.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QTableView>
#include <QTest>
#include <gmock/gmock.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/Patience.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "module/ModuleResources.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using zetcore::debug::DebugDatabase;
using zetui::controls::UI_Checkbox;
using zetui::controls::UI_TextButton;
using zetui::ui::UI_Node;

constexpr char showSeparateProcess[] = "AudioPluginManager.ShowExternalCheckBox";

using DialogAssembly = DialogFixture;
using DialogAssemblyV7 = V7DialogFixture;

/// Writes down the keys that it sees before the focused control does.
class AskedDialog : public PluginManagerDialog
{
  public:
    AskedDialog(AudioPluginManagerSettings& remembered, std::vector<int>& keys)
        : PluginManagerDialog(nullptr, GetModuleResources(), remembered, nullptr), asked(keys)
    {}
    bool UI_DoPreKeyboardEvent(UI_Node* target, const zetui::ui::KeyboardEvent& event) override
    {
        asked.push_back(event.GetOSCode());
        return PluginManagerDialog::UI_DoPreKeyboardEvent(target, event);
    }

  private:
    std::vector<int>& asked;
};

/// Counts the paths that are drawn with it.
struct CountingSupplier : zetui::pixmill::SupplierInterface
{
    zetui::pixmill::PathP CreatePath() const override
    {
        ++paths;
        return SupplierInterface::CreatePath();
    }
    mutable int paths = 0;
};

TEST_F(DialogAssembly, EveryControlIsFoundInBothSkins)
{
    for (const auto skin : zetui::skins::AllSkins()) {
        zetui::skins::SetSkin(skin);
        OpenDialog();
        for (const char* const id : {ids::kUpdateButton, ids::kEnableAllButton, ids::kDisableAllButton,
                                     ids::kAddDirectoryButton, ids::kRemoveDirectoryButton,
                                     ids::kDefaultDirectoriesButton, ids::kOKButton, ids::kCancelButton})
            EXPECT_NO_THROW(Node<UI_TextButton>(id)) << id;
        EXPECT_NO_THROW(Node<BoxView>(ids::kPluginTreeSection));
        EXPECT_NO_THROW(Node<PluginMultiColumnTree>(ids::kPluginList));
        EXPECT_NO_THROW(Node<zetui::controls::UI_SearchBox>(ids::kFindTextEdit));
        EXPECT_FALSE(dialog->GetNodeForID(ids::kEnableVST2Shell));
        EXPECT_EQ(Window().windowTitle(), "Audio Plug-In Manager");
        CloseDialog();
    }
}

TEST_F(DialogAssembly, WithoutTheSwitchSeparateProcessIsHiddenAndChecked)
{
    for (const char* const entry : {"", "True", "1", "false"}) {
        SCOPED_TRACE(entry);
        DebugDatabase::Instance().Reset();
        if (*entry)
            DebugDatabase::Instance().SetEntry(showSeparateProcess, entry);
        OpenDialog();
        EXPECT_FALSE(Node<UI_Checkbox>(ids::kSeparateProcess).UI_IsShown());
        EXPECT_TRUE(Node<UI_Checkbox>(ids::kSeparateProcess).IsChecked());
        CloseDialog();
    }
}

TEST_F(DialogAssembly, WithTheSwitchSeparateProcessIsShownAndCheckedAndCanBeUnchecked)
{
    DebugDatabase::Instance().SetEntry(showSeparateProcess, "true");
    OpenDialog();
    auto& checkbox = Node<UI_Checkbox>(ids::kSeparateProcess);
    EXPECT_TRUE(WidgetOf(checkbox).isVisible());
    EXPECT_TRUE(checkbox.IsChecked());
    PressAt(checkbox, 7, 7);
    EXPECT_FALSE(checkbox.IsChecked());
}

TEST_F(DialogAssembly, TheListOpensSortedByTheSavedColumnAndDirection)
{
    AddPlugin(L"Delay", L"/a/1.so");
    AddPlugin(L"Chorus", L"/a/2.so");
    AddPlugin(L"Echo", L"/a/3.so");
    settings.sortColumn = kColumnName;
    settings.sortAscending = true;
    OpenDialog();
    EXPECT_THAT(Names(), ElementsAre(L"Chorus", L"Delay", L"Echo"));
    CloseDialog();
    settings.sortAscending = false;
    OpenDialog();
    EXPECT_THAT(Names(), ElementsAre(L"Echo", L"Delay", L"Chorus"));
    CloseDialog();
    EXPECT_EQ(settings.sortColumn, kColumnName);
    EXPECT_FALSE(settings.sortAscending);
}

TEST_F(DialogAssembly, WithoutASavedColumnTheListIsSortedByNameAndSaysSo)
{
    AddPlugin(L"Delay", L"/a/1.so");
    AddPlugin(L"Chorus", L"/a/2.so");
    AddPlugin(L"Echo", L"/a/3.so");
    Ban(L"/a/0 banned.so");
    settings.sortAscending = false;
    OpenDialog();
    EXPECT_EQ(PluginList().GetHeaderRow()->GetSortColumn(), kColumnName);
    EXPECT_THAT(Names(), ElementsAre(L"0 banned.so", L"Chorus", L"Delay", L"Echo"));
    const QHeaderView& titles = *dynamic_cast<QTableView&>(WidgetOf(PluginList())).horizontalHeader();
    EXPECT_EQ(titles.sortIndicatorSection(), 1) << "the arrow stands there";
    EXPECT_EQ(titles.sortIndicatorOrder(), Qt::AscendingOrder);
    CloseDialog();
    EXPECT_EQ(settings.sortColumn, kColumnName);
    EXPECT_TRUE(settings.sortAscending);
}

TEST_F(DialogAssembly, TheRemoveFolderButtonStartsDisabled)
{
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/somewhere"});
    OpenDialog();
    EXPECT_FALSE(Node<UI_TextButton>(ids::kRemoveDirectoryButton).UI_IsEnabled());
    EXPECT_TRUE(Node<UI_TextButton>(ids::kAddDirectoryButton).UI_IsEnabled());
}

TEST_F(DialogAssembly, CannotBeResizedBelow400By400)
{
    OpenDialog();
    Resize(100, 100);
    EXPECT_EQ(Window().size(), QSize(400, 400));
    dialog->UI_SetGlobalStructureRect({0, 0, 399, 1}, false);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect().width, 400);
    EXPECT_EQ(dialog->UI_GetGlobalStructureRect().height, 400);
}

TEST_F(DialogAssembly, RemembersTheRescanChoiceAndTheSortWhateverTheResult)
{
    AddPlugin(L"Delay", L"/a/1.so");
    OpenDialog();
    EXPECT_FALSE(Node<UI_Checkbox>(ids::kRescanExisting).IsChecked());
    PressAt(Node<UI_Node>(ids::kRescanExisting), 7, 7);
    auto& header = *dynamic_cast<QTableView&>(WidgetOf(PluginList())).horizontalHeader();
    const QPoint pathTitle(header.sectionViewportPosition(5) + 30, header.height() / 2);
    QTest::mouseClick(header.viewport(), Qt::LeftButton, {}, pathTitle);
    CloseDialog();
    EXPECT_TRUE(settings.rescanExisting);
    EXPECT_EQ(settings.sortColumn, kColumnPath);
    EXPECT_TRUE(settings.sortAscending);

    OpenDialog();
    EXPECT_TRUE(Node<UI_Checkbox>(ids::kRescanExisting).IsChecked());
    EXPECT_EQ(PluginList().GetHeaderRow()->GetSortColumn(), kColumnPath);
    Node<UI_Checkbox>(ids::kRescanExisting).SetValue(UI_Checkbox::kMixed);
    CloseDialog();
    EXPECT_FALSE(settings.rescanExisting) << "neither on nor off counts as off";
}

TEST_F(DialogAssembly, OnceItIsGoneNothingReachesItAnyMore)
{
    AddPlugin(L"Delay", L"/a/1.so");
    OpenDialog();
    const Ptr<UI_TextButton> scan(&Node<UI_TextButton>(ids::kUpdateButton));
    const Ptr<UI_TextButton> defaults(&Node<UI_TextButton>(ids::kDefaultDirectoriesButton));
    const Ptr<UI_TextButton> remove(&Node<UI_TextButton>(ids::kRemoveDirectoryButton));
    const Ptr<UI_Node> findBox(&Node<UI_Node>(ids::kFindTextEdit));
    CloseDialog();
    TheRegistry().GetPluginInfosChangedSignal()();
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/somewhere"});
    scan->Click();
    defaults->Click();
    remove->UI_SetEnabled(true);
    remove->Click();
    QTest::keyClicks(&WidgetOf(*findBox), "text");
    HandleEvents();
    EXPECT_EQ(shown->progressDialogs, 0);
    EXPECT_TRUE(shown->questions.empty());
    EXPECT_THAT(VstFolders(), ElementsAre(zettesting::ToWide("/somewhere")));
}

TEST_F(DialogAssembly, ListsThatSomebodyKeepsFindNobodyOnceItIsGone)
{
    AddPlugin(L"Delay", L"/a/1.so");
    TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({L"/somewhere"});
    OpenDialog();
    const Ptr<zetui::controls::UI_MultiColumnTree> plugins(&PluginList()), folders(&FolderList());
    CloseDialog();
    for (const auto& list : {plugins, folders}) {
        const QAbstractItemModel& model = *dynamic_cast<QAbstractItemView&>(WidgetOf(*list)).model();
        ASSERT_EQ(model.rowCount(), 1);
        for (int column = 0; column < model.columnCount(); ++column)
            EXPECT_EQ(model.index(0, column).data().toString(), "") << column;
        list->SelectRow(list->GetRowAt(0).get(), true);
        HandleEvents();
    }
}

TEST_F(DialogAssembly, TheSearchBoxExplainsItselfAndIsNamedForScreenReaders)
{
    OpenDialog();
    EXPECT_EQ(FindBox().placeholderText(), "Filter plug-ins");
    EXPECT_EQ(FindBox().accessibleName(), "Filter plug-ins");
}

TEST_F(DialogAssemblyV7, ButtonsOfAnIconsSizeAreNamedByTheirTexts)
{
    OpenDialog();
    EXPECT_EQ(WidgetOf(Node<UI_Node>(ids::kAddDirectoryButton)).accessibleName(), "Add...");
    EXPECT_EQ(WidgetOf(Node<UI_Node>(ids::kRemoveDirectoryButton)).accessibleName(), "Remove");
    EXPECT_EQ(WidgetOf(Node<UI_Node>(ids::kDefaultDirectoriesButton)).accessibleName(), "Default");
}

TEST_F(DialogAssembly, EveryKeyIsAskedOfTheDialogFirstAsLongAsThereIsOne)
{
    std::vector<int> asked;
    dialog = zetui::utility::MakeIntrusive<AskedDialog>(settings, asked);
    dialog->UI_Show(true);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    TypeIntoFindBox("x");
    EXPECT_THAT(asked, ElementsAre('X'));
    QWidget another;
    another.setFocusPolicy(Qt::StrongFocus);
    another.show();
    another.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&another, zettesting::patienceInMilliseconds));
    another.setFocus();
    QTest::keyClick(&another, Qt::Key_Y);
    EXPECT_THAT(asked, ElementsAre('X', 'Y')) << "wherever the focus is";
    CloseDialog();
    QTest::keyClick(&another, Qt::Key_Z);
    EXPECT_EQ(asked.size(), 2u);
}

TEST_F(DialogAssembly, DrawsWithTheSupplierThatItWasGiven)
{
    const CountingSupplier supplier;
    dialog = zetui::utility::MakeIntrusive<PluginManagerDialog>(&supplier, GetModuleResources(), settings,
                                                                nullptr);
    EXPECT_EQ(dialog->GetSupplier(), &supplier);
    dialog->UI_Show(true);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
    Window().grab();
    EXPECT_GE(supplier.paths, 2) << "the lines around both sections";
    CloseDialog();
}

TEST_F(DialogAssembly, ItsTitleAndThoseOfTheColumnsComeFromTheStringTable)
{
    auto& localizer = zetcore::config::Localizer::Get();
    localizer.LoadTableFromText("\"$$$/AudioPluginManager/DialogTitle\"=\"Der Dialog\"\n"
                                "\"$$$/kiv/Enabled\"=\"Ein\"\n"
                                "\"$$$/kiv/PluginManager/PluginName\"=\"Der Name\"\n"
                                "\"$$$/kiv/PluginManager/PluginType\"=\"Die Art\"\n"
                                "\"$$$/kiv/PluginManager/PluginStatus\"=\"Der Zustand\"\n"
                                "\"$$$/kiv/PluginManager/PluginVersion\"=\"Die Version\"\n"
                                "\"$$$/kiv/PluginManager/PluginPath\"=\"Der Pfad\"\n"
                                "\"$$$/AudioPluginManager/FindPrompt\"=\"Suchen\"\n",
                                "test");
    OpenDialog();
    EXPECT_EQ(Window().windowTitle(), "Der Dialog");
    EXPECT_EQ(FindBox().placeholderText(), "Suchen");
    std::vector<std::wstring> titles;
    for (unsigned column = kColumnEnabled; column <= kColumnPath; ++column)
        titles.push_back(PluginList().GetHeaderRow()->GetColumnTitle(column));
    EXPECT_THAT(titles,
                ElementsAre(L"Ein", L"Der Name", L"Die Art", L"Der Zustand", L"Die Version", L"Der Pfad"));
    localizer.Reset();
}

} // namespace
} // namespace zetaudiopluginhostui
