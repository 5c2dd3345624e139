// These tests check when the rows of the plug-in list get their controls, and when they lose them.
#include <QApplication>
#include <QCheckBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/utility/NullPtrException.h>
#include <zettesting/Patience.h>

#include "dialog/PluginManagerIds.h"
#include "dialog/list/PluginListText.h"
#include "module/ModuleResources.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

constexpr char alwaysShowReload[] = "AlwaysShowPlugInRescanButton";

class RowsInSight : public DialogFixture
{
  protected:
    /// Counts all that are alive, also those in no window.
    template<typename Widget>
    static int CountOfNamed(const QString& start)
    {
        int count = 0;
        for (const QWidget* const widget : QApplication::allWidgets())
            count += qobject_cast<const Widget*>(widget) && widget->accessibleName().startsWith(start);
        return count;
    }
    static int CheckboxCount() { return CountOfNamed<QCheckBox>("Enable "); }
    static int ReloadButtonCount() { return CountOfNamed<QPushButton>("Reload "); }
    int VisibleRowCount() const
    {
        int count = 0;
        for (int place = 0; place < PluginList().GetRowCount(); ++place)
            count += PluginList().IsRowVisible(PluginList().GetRowAt(place).get());
        return count;
    }
    /// The error that ends the modal run after `act` was called.
    template<typename Act>
    std::string ErrorOfTheRunAfter(Act act)
    {
        MakeDialog();
        QTimer::singleShot(0, &Window(), [this, act] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(&Window(), zettesting::patienceInMilliseconds));
            act();
            HandleEvents();
            dialog->Close(zetui::dialogs::UI_DialogViewContainer::kOK);
        });
        try {
            dialog->RunModal();
        } catch (const zetcore::utility::null_ptr_exception& error) {
            return error.what();
        }
        return {};
    }
};

TEST_F(RowsInSight, ScrollingARowAwayAndBackMakesFreshWidgetsThatShowTheRecordAsItIsThen)
{
    AddManyPlugins(200);
    OpenDialog();
    const auto before = CheckboxOf(L"plugin000");
    ASSERT_TRUE(before->IsChecked());
    QWidget& list = WidgetOf(PluginList());
    list.setFocus();
    QTest::keyClick(&list, Qt::Key_End);
    HandleEvents();
    ASSERT_FALSE(PluginList().IsRowVisible(PluginList().GetRowAt(0).get()));
    EXPECT_TRUE(CheckboxOf(L"plugin199"));
    (*TheRegistry().PluginInfoBegin())->SetEnabled(false);
    QTest::keyClick(&list, Qt::Key_Home);
    HandleEvents();
    const auto after = CheckboxOf(L"plugin000");
    ASSERT_TRUE(after);
    EXPECT_NE(after.get(), before.get());
    EXPECT_FALSE(after->IsChecked());
}

TEST_F(RowsInSight, TheWidgetsOfARowThatIsScrolledAwayAreDeleted)
{
    Ban(L"/a/0 bad.so");
    AddManyPlugins(200);
    settings.sortColumn = kColumnName;
    settings.sortAscending = true;
    OpenDialog();
    const QPointer<QWidget> checkbox = &WidgetOf(*CheckboxOf(L"0 bad.so"));
    const QPointer<QWidget> button = &WidgetOf(*ReloadButtonOf(L"0 bad.so"));
    PluginList().ScrollToRow(PluginList().GetRowAt(200).get());
    HandleEvents();
    EXPECT_FALSE(checkbox);
    EXPECT_FALSE(button);
}

TEST_F(RowsInSight, WidgetsExistForVisibleRowsOnlyHoweverFarTheListWasScrolled)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(alwaysShowReload, "true");
    AddManyPlugins(1000);
    OpenDialog();
    for (int step = 0; step < 100; ++step)
        PluginList().ScrollToRow(PluginList().GetRowAt(step * 10).get());
    HandleEvents();
    EXPECT_GT(VisibleRowCount(), 3);
    EXPECT_LT(VisibleRowCount(), 40);
    EXPECT_EQ(CheckboxCount(), VisibleRowCount());
    EXPECT_EQ(ReloadButtonCount(), VisibleRowCount());
}

TEST_F(RowsInSight, AFillLeavesNoWidgetsOfTheRowsThatWereVisibleBefore)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(alwaysShowReload, "true");
    AddManyPlugins(100);
    OpenDialog();
    TypeIntoFindBox("plugin05");
    EXPECT_GT(VisibleRowCount(), 3);
    EXPECT_EQ(CheckboxCount(), VisibleRowCount());
    EXPECT_EQ(ReloadButtonCount(), VisibleRowCount());
    Press(ids::kDisableAllButton);
    EXPECT_EQ(CheckboxCount(), VisibleRowCount());
    TypeIntoFindBox("no such");
    EXPECT_EQ(CheckboxCount(), 0);
    EXPECT_EQ(ReloadButtonCount(), 0);
}

TEST_F(RowsInSight, TogglingACheckboxNeitherFillsNorSortsNorScrollsTheList)
{
    AddManyPlugins(100);
    settings.sortColumn = kColumnEnabled;
    settings.sortAscending = true;
    OpenDialog();
    PluginList().ScrollToRow(PluginList().GetRowAt(99).get());
    HandleEvents();
    const auto names = Names();
    const auto rowWidgets = [this] {
        std::vector<Ptr<zetui::controls::UI_Checkbox>> widgets;
        for (const wchar_t* const name : {L"plugin097", L"plugin098", L"plugin099"})
            widgets.push_back(CheckboxOf(name));
        return widgets;
    };
    const auto before = rowWidgets();
    PressAt(*CheckboxOf(L"plugin098"), 7, 7);
    EXPECT_FALSE(CheckboxOf(L"plugin098")->IsChecked());
    EXPECT_EQ(Names(), names);
    EXPECT_EQ(rowWidgets(), before) << "a fill makes the widgets anew";
    EXPECT_TRUE(PluginList().IsRowVisible(RowOf(L"plugin099").get()));
    PluginList().SortTree();
    EXPECT_EQ(Names().front(), L"plugin098") << "only who asks for it sorts";
}

TEST_F(RowsInSight, ARowWithoutAnEntryHasNoWidgetsAndEmptyTextsAndIsNoError)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry(alwaysShowReload, "true");
    AddPlugin(L"One", L"/a/1.so");
    Ban(L"/a/bad.so");
    settings.sortColumn = kColumnName;
    settings.sortAscending = true;
    const std::string error = ErrorOfTheRunAfter([this] {
        const auto foreign = PluginList().CreateAndAppendRow();
        PluginList().SortTree();
        HandleEvents();
        EXPECT_TRUE(PluginList().IsRowVisible(foreign.get()));
        for (const int cell : {kEnabledCell, kStatusCell})
            EXPECT_EQ(foreign->GetCellView(cell)->ChildCount(), 0u) << cell;
        for (unsigned column = kColumnEnabled; column <= kColumnPath; ++column)
            EXPECT_THAT(ColumnTexts(column), ::testing::Contains(L"")) << column;
        EXPECT_THAT(Names(), ::testing::ElementsAre(L"", L"bad.so", L"One"));
        WidgetOf(PluginList()).grab();
        PluginList().SelectRow(foreign.get(), true);
        PluginList().SelectCell(foreign.get(), kStatusCell);
        HandleEvents();
        PluginList().GetHeaderRow()->SetSortColumn(kColumnEnabled);
        PluginList().SortTree();
        Press(ids::kDisableAllButton);
        EXPECT_THAT(Names(), ::testing::UnorderedElementsAre(L"One", L"bad.so")) << "a fill removes it";
    });
    EXPECT_EQ(error, "");
}

TEST_F(RowsInSight, ARowWithoutTheCellOfAWidgetEndsTheRunWithTheErrorThatNamesTheView)
{
    AddPlugin(L"One", L"/a/1.so");
    EXPECT_EQ(ErrorOfTheRunAfter([] {}), "");
    EXPECT_NE(ErrorOfTheRunAfter([this] { PluginList().SetNumberOfColumns(0); }).find("UI_SubView"),
              std::string::npos);
    ResetRegistry(TheRegistry());
    Ban(L"/a/bad.so");
    EXPECT_NE(ErrorOfTheRunAfter([this] { PluginList().SetNumberOfColumns(2); }).find("UI_SubView"),
              std::string::npos)
        << "there is room for the checkbox, but not for the button";
}

/// Lets tests call the handler that the list calls.
class ToldDialog : public PluginManagerDialog
{
  public:
    using PluginManagerDialog::OnPluginRowVisibilityChanged;
    using PluginManagerDialog::PluginManagerDialog;
};

TEST_F(RowsInSight, ANullRowIsTheErrorThatNamesIt)
{
    const auto told = zetui::utility::MakeIntrusive<ToldDialog>(nullptr, GetModuleResources(), settings,
                                                                static_cast<HWND>(nullptr));
    try {
        told->OnPluginRowVisibilityChanged(nullptr);
        ADD_FAILURE() << "no error";
    } catch (const zetcore::utility::null_ptr_exception& error) {
        EXPECT_NE(std::string(error.what()).find("UI_MultiColumnTreeRow"), std::string::npos);
    }
}

} // namespace
} // namespace zetaudiopluginhostui
