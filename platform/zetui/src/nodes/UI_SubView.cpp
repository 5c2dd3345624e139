#include <zetui/nodes/UI_SubView.h>

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/NullPtrException.h>

#include "nodes/NodeAccess.h"
#include "nodes/NodeState.h"
#include "nodes/ViewState.h"

namespace zetui::ui {

UI_SubView::UI_SubView() : view(std::make_unique<ViewState>()) {}

UI_SubView::UI_SubView(void* nativeWidget) : UI_Node(nativeWidget), view(std::make_unique<ViewState>()) {}

UI_SubView::~UI_SubView()
{
    for (utility::IntrusivePtr<UI_Node>& child : view->children) {
        child->node->parent = nullptr;
        const WeakKey key = child->GetWeakKey();
        child = nullptr;
        // Somebody else holds the child, so its widget must not go with ours.
        if (const auto alive = Lock(key))
            NodeAccess::TakeOut(static_cast<UI_Node*>(alive.get()));
    }
}

void UI_SubView::InsertChild(const utility::IntrusivePtr<UI_Node>& child)
{
    zetcore::threads::AssertMainThread();
    if (!child)
        zetcore::utility::DoThrowNullPtrException("UI_Node");
    for (const UI_Node* above = this; above; above = above->UI_GetParentNode()) {
        if (above == child.get())
            throw std::logic_error("A node cannot be inserted into itself");
    }
    const utility::IntrusivePtr<UI_Node> kept = child;
    if (UI_SubView* const before = kept->UI_GetParentNode())
        before->RemoveChild(kept.get());
    view->children.push_back(kept);
    NodeAccess::ForgetLayout(this);
    NodeAccess::Embed(kept.get(), WidgetOf(this), this);
    if (QWidget* const widget = WidgetOf(kept.get()))
        widget->raise();
}

void UI_SubView::RemoveChild(UI_Node* child)
{
    zetcore::threads::AssertMainThread();
    const auto found = std::find_if(view->children.begin(), view->children.end(),
                                    [child](const auto& held) { return held.get() == child; });
    if (found == view->children.end())
        return;
    const utility::IntrusivePtr<UI_Node> kept = std::move(*found);
    view->children.erase(found);
    NodeAccess::ForgetLayout(this);
    NodeAccess::TakeOut(kept.get());
}

std::size_t UI_SubView::ChildCount() const noexcept
{
    return view->children.size();
}

utility::IntrusivePtr<UI_Node> UI_SubView::GetChild(std::size_t index) const
{
    return index < view->children.size() ? view->children[index] : nullptr;
}

utility::IntrusivePtr<UI_Node> UI_SubView::FindNodeForID(const std::string& id)
{
    if (UI_GetID() == id)
        return this;
    for (const auto& child : view->children) {
        if (auto* const inner = dynamic_cast<UI_SubView*>(child.get())) {
            if (auto found = inner->FindNodeForID(id))
                return found;
        } else if (child->UI_GetID() == id) {
            return child;
        }
    }
    return nullptr;
}

void UI_SubView::SetAutoLayout(const AutoLayout& layout)
{
    view->layout = layout;
    NodeAccess::ForgetLayout(this);
}

const AutoLayout& UI_SubView::GetAutoLayout() const noexcept
{
    return view->layout;
}

void UI_SubView::SetConstraints(unsigned constraints)
{
    view->constraints = constraints;
    if (UI_SubView* const parent = UI_GetParentNode())
        NodeAccess::ForgetLayout(parent);
}

unsigned UI_SubView::GetConstraints() const noexcept
{
    return view->constraints;
}

void UI_SubView::UI_SizeChanged(const RectF& bounds)
{
    const LayoutSize to{bounds.width, bounds.height};
    const LayoutSize from = std::exchange(view->size, to);
    if (from == to || !view->layout.enabled || !view->layout.layoutChildren || view->children.empty())
        return;
    if (!view->reference)
        view->reference = ViewState::Reference{from, NodeAccess::LayoutChildrenOf(this)};
    const ViewState::Reference& start = *view->reference;
    const std::vector<RectF> frames = LayOutChildren(view->layout, start.size, to, start.children);
    // The children are copied, because a child that is told its size may remove itself.
    const auto children = view->children;
    for (std::size_t i = 0; i < children.size(); ++i)
        NodeAccess::SetFrameByLayout(children[i].get(), frames[i]);
}

} // namespace zetui::ui
