#include <zetui/archiveddialog/ControlStore.h>

#include <map>
#include <stdexcept>

#include <QHeaderView>
#include <QScreen>
#include <QTableView>

#include <zetcore/debug/ResetTrace.h>
#include <zetcore/debug/Trace.h>
#include <zetui/tree/UI_MultiColumnTree.h>

#include "testing/DialogFixture.h"

namespace zetui::ui {
namespace {

using controls::UI_MultiColumnTree;
using controls::UI_MultiColumnTreeHeaderRow;
using utility::MakeIntrusive;
using Order = std::vector<unsigned>;

const std::string columnsKey = "TestDialog/Columns/columns";
const std::string windowKey = "TestDialog/window";

class MemoryStore final : public ControlStore
{
  public:
    std::string Read(const std::string& key) const override
    {
        const auto found = values.find(key);
        return found == values.end() ? std::string() : found->second;
    }
    void Write(const std::string& key, const std::string& value) override
    {
        values[key] = value;
        written.push_back(key);
    }
    void OnUnusable(const std::string& key, const std::string& value) override
    {
        unusable.push_back(key + ": " + value);
    }

    std::map<std::string, std::string> values;
    std::vector<std::string> written, unusable;
};

/// A store of which nothing works.
class BrokenStore final : public ControlStore
{
  public:
    std::string Read(const std::string&) const override { throw std::runtime_error("cannot read"); }
    void Write(const std::string&, const std::string&) override { throw std::runtime_error("cannot write"); }
};

/// A window with a list of four columns, of which the first keeps its place.
class RememberedControlsTest : public DialogFixture
{
  protected:
    ~RememberedControlsTest() override { SetControlStore(nullptr); }

    utility::IntrusivePtr<TestDialog> MakeDialog(bool resizable = true)
    {
        auto dialog = MakeIntrusive<TestDialog>(resources, WindowVariant(), resizable);
        tree = MakeIntrusive<UI_MultiColumnTree>(1U, 20.0F);
        tree->UI_SetID("Columns");
        tree->SetWantsKeyboardFocus(true);
        tree->SetNumberOfColumns(0);
        header = MakeIntrusive<UI_MultiColumnTreeHeaderRow>(tree.get());
        for (unsigned id = 1; id <= 4; ++id)
            header->AppendColumn(L"Title", id);
        header->SetColumnKeepsPlace(1, true);
        dialog->GetRootView()->InsertChild(tree);
        tree->UI_SetLocalRectF({0, 0, 300, 100});
        return dialog;
    }
    static bool FillsTheScreen(const QWidget& window)
    {
        return window.frameGeometry() == window.screen()->availableGeometry();
    }
    /// The user moves the framed title with the keyboard.
    void MoveTitle(const std::vector<Qt::Key>& frame, const std::vector<Qt::Key>& move)
    {
        auto& titles = *static_cast<QTableView&>(*WidgetOf(tree.get())).horizontalHeader();
        titles.setFocus();
        for (const Qt::Key key : frame)
            QTest::keyClick(&titles, key);
        for (const Qt::Key key : move)
            QTest::keyClick(&titles, key, Qt::ControlModifier);
    }
    /// Opens a window, lets the user act and closes it by Cancel. The order that the columns had at the
    /// opening.
    Order OrderOfOpened(const std::function<void(TestDialog&)>& user = {})
    {
        const auto dialog = MakeDialog();
        Order order;
        Run(*dialog, [&] {
            order = header->GetColumnOrder();
            if (user)
                user(*dialog);
            Key(Qt::Key_Escape);
        });
        return order;
    }

    std::shared_ptr<MemoryStore> store = std::make_shared<MemoryStore>();
    utility::IntrusivePtr<UI_MultiColumnTree> tree;
    utility::IntrusivePtr<UI_MultiColumnTreeHeaderRow> header;
};

TEST_F(RememberedControlsTest, ColumnsStandWhereTheUserHasMovedThem)
{
    SetControlStore(store);
    EXPECT_EQ(OrderOfOpened([this](TestDialog&) {
                  MoveTitle({Qt::Key_End}, {Qt::Key_Left, Qt::Key_Left});
              }),
              (Order{1, 2, 3, 4}));
    EXPECT_EQ(store->values[columnsKey], "1 4 2 3");
    EXPECT_EQ(OrderOfOpened([this](TestDialog&) { MoveTitle({Qt::Key_End}, {Qt::Key_Left}); }),
              (Order{1, 4, 2, 3}));
    EXPECT_EQ(OrderOfOpened(), (Order{1, 4, 3, 2}));
    EXPECT_TRUE(store->unusable.empty());
}

TEST_F(RememberedControlsTest, OnlyWhatHasChangedIsWritten)
{
    SetControlStore(store);
    OrderOfOpened();
    EXPECT_TRUE(store->written.empty()) << "the archive's own order need not be kept";
    OrderOfOpened([this](TestDialog&) { MoveTitle({Qt::Key_End}, {Qt::Key_Left}); });
    OrderOfOpened();
    EXPECT_EQ(store->written, std::vector<std::string>{columnsKey});
    OrderOfOpened([this](TestDialog&) { MoveTitle({Qt::Key_End}, {Qt::Key_Left}); });
    EXPECT_EQ(store->values[columnsKey], "1 2 3 4") << "the first order, when the user goes back to it";
}

TEST_F(RememberedControlsTest, AnOrderThatCannotBeIsToldAndThenReplaced)
{
    SetControlStore(store);
    for (const char* const bad : {"1 4 2", "1 4 2 3 5", "1 4 4 3", "columns", "4 1 2 3", "-1", "1,4,2,3",
                                  "1 4 2 4294967299", "1 4 2 99999999999999999999", " "}) {
        store->values = {{columnsKey, bad}};
        store->unusable.clear();
        EXPECT_EQ(OrderOfOpened(), (Order{1, 2, 3, 4})) << bad;
        EXPECT_EQ(store->unusable, std::vector<std::string>{columnsKey + ": " + bad});
        EXPECT_EQ(store->values[columnsKey], "1 2 3 4") << bad;
        EXPECT_EQ(OrderOfOpened(), (Order{1, 2, 3, 4}));
        EXPECT_EQ(store->unusable.size(), 1U) << "told once";
    }
}

TEST_F(RememberedControlsTest, ValuesOfOtherWindowsStay)
{
    SetControlStore(store);
    store->values = {{"Other/Columns/columns", "2 1"}, {"TestDialog/List/columns", "4 3 2 1"}};
    EXPECT_EQ(OrderOfOpened([this](TestDialog&) { MoveTitle({Qt::Key_End}, {Qt::Key_Left}); }),
              (Order{1, 2, 3, 4}));
    EXPECT_EQ(store->values["Other/Columns/columns"], "2 1");
    EXPECT_EQ(store->values["TestDialog/List/columns"], "4 3 2 1");
}

TEST_F(RememberedControlsTest, AMaximisedWindowIsMaximisedAgainAndKnowsItsOtherPlace)
{
    SetControlStore(store);
    const UI_ArchivedDialog::RectI place{30, 40, 600, 500};
    const auto openAt = [&](const std::function<void(QWidget&)>& user) {
        const auto dialog = MakeDialog();
        dialog->UI_SetGlobalStructureRect(place, true);
        Run(*dialog, [&] {
            user(*dialog->Window());
            Key(Qt::Key_Escape);
        });
        EXPECT_EQ(dialog->UI_GetGlobalStructureRect(), place);
    };
    openAt([](QWidget& window) {
        EXPECT_FALSE(window.isMaximized());
        window.showMaximized();
        EXPECT_TRUE(WaitUntil([&] { return FillsTheScreen(window); }));
    });
    EXPECT_EQ(store->values[windowKey], "maximised");
    openAt([](QWidget& window) {
        EXPECT_TRUE(window.isMaximized());
        EXPECT_TRUE(WaitUntil([&] { return FillsTheScreen(window); }));
        window.showNormal();
        EXPECT_TRUE(WaitUntil([&] { return window.geometry() == QRect(30, 40, 600, 500); }));
    });
    EXPECT_EQ(store->values[windowKey], "normal");
    openAt([](QWidget& window) { EXPECT_FALSE(window.isMaximized()); });
    EXPECT_TRUE(store->unusable.empty());
}

TEST_F(RememberedControlsTest, AWindowStateThatIsNoneIsToldAndReplaced)
{
    SetControlStore(store);
    store->values = {{windowKey, "fullscreen"}};
    OrderOfOpened([](TestDialog& dialog) { EXPECT_FALSE(dialog.Window()->isMaximized()); });
    EXPECT_EQ(store->unusable, std::vector<std::string>{windowKey + ": fullscreen"});
    EXPECT_EQ(store->values[windowKey], "normal");
}

TEST_F(RememberedControlsTest, AWindowOfOneSizeIsNotMaximised)
{
    SetControlStore(store);
    store->values = {{windowKey, "maximised"}};
    const auto dialog = MakeDialog(false);
    Run(*dialog, [&] {
        EXPECT_FALSE(dialog->Window()->isMaximized());
        EXPECT_FALSE(dialog->Window()->windowFlags().testFlag(Qt::WindowMaximizeButtonHint));
        Key(Qt::Key_Escape);
    });
    EXPECT_EQ(store->values[windowKey], "maximised");
}

TEST_F(RememberedControlsTest, WithoutAStoreNothingIsRememberedAndTheWholePlaceIsTold)
{
    OrderOfOpened([this](TestDialog& dialog) {
        MoveTitle({Qt::Key_End}, {Qt::Key_Left});
        dialog.Window()->showMaximized();
        EXPECT_TRUE(WaitUntil([&dialog] { return FillsTheScreen(*dialog.Window()); }));
        const auto place = dialog.UI_GetGlobalStructureRect();
        EXPECT_EQ(QSize(place.width, place.height), dialog.Window()->size());
    });
    EXPECT_EQ(OrderOfOpened([](TestDialog& dialog) { EXPECT_FALSE(dialog.Window()->isMaximized()); }),
              (Order{1, 2, 3, 4}));
}

TEST_F(RememberedControlsTest, AStoreThatFailsIsTracedAndTheWindowOpensAndCloses)
{
    std::vector<std::string> traced;
    zetcore::debug::SetMasterTraceVolume(1);
    zetcore::debug::SetTraceSink(
        [&traced](int, std::string_view, std::string_view text) { traced.emplace_back(text); });
    SetControlStore(std::make_shared<BrokenStore>());
    EXPECT_EQ(OrderOfOpened([this](TestDialog&) { MoveTitle({Qt::Key_End}, {Qt::Key_Left}); }),
              (Order{1, 2, 3, 4}));
    zetcore::debug::ResetTrace();
    EXPECT_EQ(traced, (std::vector<std::string>{"The control store failed: cannot read\r\n",
                                                "The control store failed: cannot read\r\n",
                                                "The control store failed: cannot write\r\n"}));
}

TEST_F(RememberedControlsTest, AValueThatCannotBeUsedIsTracedUnlessTheStoreTakesIt)
{
    std::vector<std::string> traced;
    zetcore::debug::SetMasterTraceVolume(3);
    zetcore::debug::SetTraceSink(
        [&traced](int, std::string_view, std::string_view text) { traced.emplace_back(text); });
    store->ControlStore::OnUnusable("Key", "x");
    zetcore::debug::ResetTrace();
    EXPECT_EQ(traced, std::vector<std::string>{"The control store's value of Key cannot be used: x\r\n"});
}

} // namespace
} // namespace zetui::ui
