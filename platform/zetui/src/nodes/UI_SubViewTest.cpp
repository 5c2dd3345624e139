#include <zetui/nodes/UI_SubView.h>

#include <stdexcept>

#include <zetcore/utility/NullPtrException.h>

#include <QEvent>
#include <QPointer>

#include "nodes/NodeAccess.h"
#include "testing/PrintRect.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using RectF = UI_Node::RectF;
using utility::IntrusivePtr;
using utility::MakeIntrusive;

class UI_SubViewTest : public WindowsFixture
{
  protected:
    static IntrusivePtr<UI_SubView> View(const RectF& frame, unsigned constraints = 0)
    {
        const auto view = MakeIntrusive<UI_SubView>();
        view->UI_SetLocalRectF(frame);
        view->SetConstraints(constraints);
        return view;
    }
};

class CountsItself : public UI_Node
{
  public:
    explicit CountsItself(int& counter) : alive(counter) { ++alive; }

  protected:
    ~CountsItself() override { --alive; }

  private:
    int& alive;
};

TEST_F(UI_SubViewTest, HoldsItsChildren)
{
    int alive = 0;
    {
        const auto view = View({});
        view->InsertChild(MakeIntrusive<CountsItself>(alive));
        EXPECT_EQ(alive, 1);
        EXPECT_EQ(view->ChildCount(), 1U);
        EXPECT_EQ(view->GetChild(0)->UI_GetParentNode(), view.get());
        EXPECT_FALSE(view->GetChild(1));
    }
    EXPECT_EQ(alive, 0);
}

TEST_F(UI_SubViewTest, ARemovedChildIsLetGo)
{
    int alive = 0;
    const auto view = View({});
    view->InsertChild(MakeIntrusive<CountsItself>(alive));
    view->RemoveChild(view->GetChild(0).get());
    EXPECT_EQ(alive, 0);
    EXPECT_EQ(view->ChildCount(), 0U);
    view->RemoveChild(nullptr);
    view->RemoveChild(view.get());
}

TEST_F(UI_SubViewTest, AChildThatOthersHoldSurvivesItsParentWithItsWidget)
{
    auto view = View({0, 0, 100, 100});
    const auto child = View({1, 2, 3, 4});
    view->InsertChild(child);
    view = nullptr;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(child->UI_GetParentNode(), nullptr);
    ASSERT_NE(WidgetOf(child.get()), nullptr);
    EXPECT_EQ(child->UI_GetLocalRectF(true), (RectF{1, 2, 3, 4}));
}

TEST_F(UI_SubViewTest, InsertingMovesAChildFromItsOldParent)
{
    const auto before = View({}), after = View({});
    const auto child = View({5, 6, 7, 8});
    before->InsertChild(child);
    after->InsertChild(child);
    EXPECT_EQ(before->ChildCount(), 0U);
    EXPECT_EQ(child->UI_GetParentNode(), after.get());
    EXPECT_EQ(WidgetOf(child.get())->parentWidget(), WidgetOf(after.get()));
    EXPECT_EQ(child->UI_GetLocalRectF(true), (RectF{5, 6, 7, 8}));
    after->InsertChild(child);
    EXPECT_EQ(after->ChildCount(), 1U);
}

TEST_F(UI_SubViewTest, RefusesItselfItsParentsAndNothing)
{
    const auto outer = View({}), inner = View({});
    outer->InsertChild(inner);
    EXPECT_THROW(outer->InsertChild(outer), std::logic_error);
    EXPECT_THROW(inner->InsertChild(outer), std::logic_error);
    EXPECT_THROW(inner->InsertChild(nullptr), zetcore::utility::null_ptr_exception);
    EXPECT_EQ(outer->ChildCount(), 1U);
}

TEST_F(UI_SubViewTest, FindsNodesByIdDepthFirst)
{
    const auto root = View({}), strip = View({});
    const auto inStrip = MakeIntrusive<UI_Node>(), later = MakeIntrusive<UI_Node>();
    root->UI_SetID("root");
    inStrip->UI_SetID("same");
    later->UI_SetID("same");
    root->InsertChild(strip);
    strip->InsertChild(inStrip);
    root->InsertChild(later);
    EXPECT_EQ(root->FindNodeForID("root").get(), root.get());
    EXPECT_EQ(root->FindNodeForID("same").get(), inStrip.get());
    EXPECT_FALSE(root->FindNodeForID("other"));
}

TEST_F(UI_SubViewTest, LaysOutItsChildrenWhenItsSizeChanges)
{
    const auto root = View({0, 0, 100, 100});
    root->SetAutoLayout({.enabled = true});
    const auto corner = View({80, 80, 20, 20}, kConstraintRight | kConstraintBottom);
    root->InsertChild(corner);
    root->UI_SetLocalRectF({0, 0, 150, 120});
    EXPECT_EQ(corner->UI_GetLocalRectF(true), (RectF{130, 100, 20, 20}));
}

TEST_F(UI_SubViewTest, ShrinkingAndGrowingAgainGivesTheOldLookBack)
{
    const auto root = View({0, 0, 100, 100});
    root->SetAutoLayout({.enabled = true, .maintainMargins = true, .scaleChildren = true});
    const auto first = View({0, 0, 100, 30}), second = View({0, 40, 100, 60});
    root->InsertChild(first);
    root->InsertChild(second);
    root->UI_SetLocalRectF({0, 0, 3, 3});
    root->UI_SetLocalRectF({0, 0, 100, 100});
    EXPECT_EQ(first->UI_GetLocalRectF(true), (RectF{0, 0, 100, 30}));
    EXPECT_EQ(second->UI_GetLocalRectF(true), (RectF{0, 40, 100, 60}));
}

TEST_F(UI_SubViewTest, AChildThatWasMovedKeepsItsNewPlace)
{
    const auto root = View({0, 0, 100, 100});
    root->SetAutoLayout({.enabled = true});
    const auto child = View({80, 0, 20, 20}, kConstraintRight);
    root->InsertChild(child);
    root->UI_SetLocalRectF({0, 0, 200, 100});
    child->UI_SetLocalRectF({150, 0, 50, 20});
    root->UI_SetLocalRectF({0, 0, 300, 100});
    EXPECT_EQ(child->UI_GetLocalRectF(true), (RectF{250, 0, 50, 20}));
}

TEST_F(UI_SubViewTest, LayoutGoesDownToTheChildrensChildren)
{
    const auto root = View({0, 0, 100, 100});
    root->SetAutoLayout({.enabled = true, .maintainMargins = true, .scaleChildren = true});
    const auto strip = View({10, 0, 80, 20});
    strip->SetAutoLayout({.enabled = true, .horizontal = true});
    const auto button = View({60, 0, 20, 20}, kConstraintRight);
    strip->InsertChild(button);
    root->InsertChild(strip);
    root->UI_SetLocalRectF({0, 0, 150, 100});
    EXPECT_EQ(button->UI_GetLocalRectF(true), (RectF{110, 0, 20, 20}));
}

TEST_F(UI_SubViewTest, WithoutLayoutChildrenStay)
{
    const auto root = View({0, 0, 100, 100});
    const auto child = View({80, 0, 20, 20}, kConstraintRight);
    root->InsertChild(child);
    root->UI_SetLocalRectF({0, 0, 200, 100});
    EXPECT_EQ(child->UI_GetLocalRectF(true), (RectF{80, 0, 20, 20}));
}

} // namespace
} // namespace zetui::ui
