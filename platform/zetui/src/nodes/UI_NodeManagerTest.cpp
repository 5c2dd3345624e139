#include <zetui/nodes/UI_NodeManager.h>

#include <QLineEdit>
#include <QTest>

#include <zettesting/Patience.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_SubView.h>

#include "nodes/KeyEvents.h"
#include "nodes/NodeAccess.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using utility::MakeIntrusive;

class Filter : public KeyboardEventFilter
{
  public:
    bool UI_DoPreKeyboardEvent(UI_Node* target, const KeyboardEvent& event) override
    {
        codes.push_back(event.GetOSCode());
        shifts.push_back(event.IsShiftDown());
        lastTarget = target;
        if (whenAsked)
            whenAsked();
        return consumes;
    }

    std::vector<int> codes;
    std::vector<bool> shifts;
    UI_Node* lastTarget = nullptr;
    bool consumes = false;
    std::function<void()> whenAsked;
};

class FilteringView : public UI_SubView, public Filter
{};

class UI_NodeManagerTest : public WindowsFixture
{
  protected:
    UI_NodeManagerTest() : manager(UI_NodeManager::Get(true))
    {
        for (const auto& field : {first, second})
            NodeAccess::Embed(field.get(), &window, nullptr);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window, zettesting::patienceInMilliseconds));
        first->UI_GainKeyboardFocus(kFocusChangeProgram);
    }
    ~UI_NodeManagerTest() override { UI_NodeManager::Get(true); }

    QWidget window;
    utility::IntrusivePtr<controls::UI_TextEdit> first = MakeIntrusive<controls::UI_TextEdit>();
    utility::IntrusivePtr<controls::UI_TextEdit> second = MakeIntrusive<controls::UI_TextEdit>();
    UI_NodeManager* manager;
};

TEST_F(UI_NodeManagerTest, AFilterSeesEachKeyOnceBeforeTheFocus)
{
    Filter filter;
    const AddAndRemoveKeyboardEventFilterNode added(manager, &filter, false);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_A);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_F9);
    EXPECT_EQ(filter.codes, (std::vector<int>{'A', Qt::Key_F9}));
    EXPECT_EQ(filter.lastTarget, first.get());
    EXPECT_EQ(first->GetValue(), L"a");
}

TEST_F(UI_NodeManagerTest, AConsumedKeyDoesNotReachTheFocus)
{
    Filter filter;
    filter.consumes = true;
    const AddAndRemoveKeyboardEventFilterNode added(manager, &filter, false);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_A);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_Tab);
    EXPECT_EQ(first->GetValue(), L"");
    EXPECT_TRUE(first->UI_HasKeyboardFocus(false));
    EXPECT_EQ(filter.codes, (std::vector<int>{'A', 9}));
}

TEST_F(UI_NodeManagerTest, BackwardTabIsTabWithShift)
{
    Filter filter;
    filter.consumes = true;
    const AddAndRemoveKeyboardEventFilterNode added(manager, &filter, false);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_Backtab, Qt::ShiftModifier);
    // The first key is Shift itself.
    ASSERT_EQ(filter.codes.size(), 2U);
    EXPECT_EQ(filter.codes.back(), 9);
    EXPECT_TRUE(filter.shifts.back());
}

TEST_F(UI_NodeManagerTest, TheLastOneAddedIsAskedFirst)
{
    Filter older, younger;
    younger.consumes = true;
    const AddAndRemoveKeyboardEventFilterNode addedOlder(manager, &older, false);
    {
        const AddAndRemoveKeyboardEventFilterNode addedYounger(manager, &younger, false);
        QTest::keyClick(WidgetOf(first.get()), Qt::Key_A);
    }
    EXPECT_TRUE(older.codes.empty());
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_B);
    EXPECT_EQ(older.codes, (std::vector<int>{'B'}));
    EXPECT_EQ(younger.codes, (std::vector<int>{'A'}));
}

TEST_F(UI_NodeManagerTest, AFilterMayRemoveAnotherWhileItIsAsked)
{
    Filter older, younger;
    auto addedOlder = std::make_unique<AddAndRemoveKeyboardEventFilterNode>(manager, &older, false);
    younger.whenAsked = [&] { addedOlder.reset(); };
    const AddAndRemoveKeyboardEventFilterNode addedYounger(manager, &younger, false);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_A);
    EXPECT_TRUE(older.codes.empty());
    EXPECT_EQ(younger.codes.size(), 1U);
}

TEST_F(UI_NodeManagerTest, AFilterForItsOwnFocusIsAskedOnlyThen)
{
    const auto view = MakeIntrusive<FilteringView>();
    view->InsertChild(second);
    NodeAccess::Embed(view.get(), &window, nullptr);
    const AddAndRemoveKeyboardEventFilterNode added(manager, view.get(), true);
    first->UI_GainKeyboardFocus(kFocusChangeProgram);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_A);
    EXPECT_TRUE(view->codes.empty());
    second->UI_GainKeyboardFocus(kFocusChangeProgram);
    QTest::keyClick(WidgetOf(second.get()), Qt::Key_B);
    EXPECT_EQ(view->codes, (std::vector<int>{'B'}));
}

TEST_F(UI_NodeManagerTest, TheFocusNodeIsTheNearestOne)
{
    EXPECT_EQ(manager->GetFocusNode(), first.get());
    QLineEdit foreign(&window);
    foreign.show();
    foreign.setFocus();
    EXPECT_EQ(manager->GetFocusNode(), nullptr);
}

TEST_F(UI_NodeManagerTest, AFreshOneHasNoFilters)
{
    Filter filter;
    filter.consumes = true;
    manager->AddKeyboardEventFilterNode(&filter);
    EXPECT_NE(UI_NodeManager::Get(true), nullptr);
    QTest::keyClick(WidgetOf(first.get()), Qt::Key_A);
    EXPECT_EQ(first->GetValue(), L"a");
    UI_NodeManager::Get(false)->RemoveKeyboardEventFilterNode(&filter);
    UI_NodeManager::Get(false)->AddKeyboardEventFilterNode(nullptr);
}

TEST(KeyCodes, AreThoseOfCharactersInUpperCase)
{
    EXPECT_EQ(OSCodeOf(Qt::Key_A), 'A');
    EXPECT_EQ(OSCodeOf(Qt::Key_7), '7');
    EXPECT_EQ(OSCodeOf(Qt::Key_Space), ' ');
    EXPECT_EQ(OSCodeOf(Qt::Key_Tab), 9);
    EXPECT_EQ(OSCodeOf(Qt::Key_Backtab), 9);
    EXPECT_EQ(OSCodeOf(Qt::Key_Return), 13);
    EXPECT_EQ(OSCodeOf(Qt::Key_Enter), 13);
    EXPECT_EQ(OSCodeOf(Qt::Key_Escape), 27);
    EXPECT_EQ(OSCodeOf(Qt::Key_Backspace), 8);
    EXPECT_GT(OSCodeOf(Qt::Key_Left), 0x10FFFF);
}

} // namespace
} // namespace zetui::ui
