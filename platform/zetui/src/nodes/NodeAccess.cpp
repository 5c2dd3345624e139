#include "nodes/NodeAccess.h"

#include <algorithm>
#include <cmath>
#include <optional>
#include <stdexcept>

#include <QVariant>

#include <zetui/application/Application.h>
#include <zetui/nodes/UI_NodeManager.h>

#include "nodes/AccessibleNode.h"
#include "nodes/NodeState.h"
#include "nodes/ViewState.h"

namespace zetui::ui {

namespace {

/// A field may have any width. Fewer pixels than these would hardly show what is in it.
constexpr float leastField = 100;

constexpr char supplierProperty[] = "zetuiSupplier";

/// Qt's own limit of a widget's size. It bounds positions here, too.
int WholePixels(float value)
{
    constexpr float limit = QWIDGETSIZE_MAX;
    return std::isnan(value) ? 0 : qRound(std::clamp(value, -limit, limit));
}

} // namespace

UI_Node* NodeAccess::NodeOf(const QWidget* widget)
{
    return widget ? static_cast<UI_Node*>(widget->property(nodeProperty).value<void*>()) : nullptr;
}

QWidget* NodeAccess::WidgetOf(const UI_Node* node) noexcept
{
    return node ? node->node->widget.data() : nullptr;
}

UI_Node* NodeAccess::NearestNode(const QWidget* widget)
{
    for (; widget; widget = widget->parentWidget()) {
        if (UI_Node* const node = NodeOf(widget))
            return node;
    }
    return nullptr;
}

void NodeAccess::RequireWindows()
{
    if (!HaveWindows() && !InitializeWindows())
        throw std::runtime_error("There is no display to open windows on");
    // The application object may be a new one, whose keys nobody filters yet.
    UI_NodeManager::Get(false);
    UseAccessibleNodes();
}

void NodeAccess::Embed(UI_Node* node, QWidget* into, UI_SubView* parentNode)
{
    node->node->parent = parentNode;
    if (QWidget* const widget = WidgetOf(node)) {
        const QRect frame = widget->geometry();
        widget->setParent(into);
        widget->setGeometry(frame);
        widget->setVisible(node->node->shown);
    }
    if (QWidget* const companion = node->node->companion) {
        const QRect frame = companion->geometry();
        companion->setParent(into);
        companion->setGeometry(frame);
        companion->setVisible(node->node->shown);
    }
}

void NodeAccess::TakeOut(UI_Node* node)
{
    node->node->parent = nullptr;
    for (QWidget* const widget : {WidgetOf(node), node->node->companion.data()}) {
        if (!widget)
            continue;
        widget->hide();
        widget->setParent(nullptr);
    }
}

void NodeAccess::SetFrameByLayout(UI_Node* node, const UI_Node::RectF& frame)
{
    QWidget* const widget = WidgetOf(node);
    if (!widget)
        return;
    UI_Node::NodeState& state = *node->node;
    state.frame = frame;
    // Edges are rounded, and not sizes, so that neighbours stay neighbours.
    const int left = WholePixels(frame.left);
    const int top = WholePixels(frame.top);
    state.pixels = QRect(left, top, std::max(0, WholePixels(frame.left + frame.width) - left),
                         std::max(0, WholePixels(frame.top + frame.height) - top));
    if (state.companion)
        state.pixels = state.placeCompanion(state.pixels);
    widget->setGeometry(state.pixels);
    ReportSize(node);
}

void NodeAccess::PlaceAsArchived(UI_Node* node, const UI_Node::RectF& frame)
{
    node->node->archivedFrame = frame;
    node->UI_SetLocalRectF(frame);
}

void NodeAccess::ReturnToArchivedPlaces(UI_SubView* view)
{
    if (const std::optional<UI_Node::RectF>& frame = view->node->archivedFrame) {
        SetFrameByLayout(view, *frame);
        SetLaidOutSize(view, {frame->width, frame->height});
    }
    for (const auto& child : view->view->children) {
        if (auto* const inner = dynamic_cast<UI_SubView*>(child.get()))
            ReturnToArchivedPlaces(inner);
        else if (const std::optional<UI_Node::RectF>& frame = child->node->archivedFrame)
            SetFrameByLayout(child.get(), *frame);
    }
}

std::vector<LayoutChild> NodeAccess::LayoutChildrenOf(const UI_SubView* view)
{
    std::vector<LayoutChild> children;
    for (const auto& child : view->view->children) {
        const auto* const inner = dynamic_cast<const UI_SubView*>(child.get());
        LayoutChild item{child->UI_GetLocalRectF(true), inner ? inner->GetConstraints() : 0};
        if (HasNeededSize(child.get())) {
            const auto needed = static_cast<float>(NeededSize(child.get()).width());
            item.leastWidth = needed > 0 ? needed : leastField;
        }
        children.push_back(item);
    }
    return children;
}

void NodeAccess::ForgetLayout(UI_SubView* view)
{
    view->view->reference.reset();
}

void NodeAccess::MakeWayBelow(UI_SubView* view)
{
    UI_SubView::ViewState& state = *view->view;
    const auto children = state.children;
    if (!state.reference) {
        std::vector<LayoutChild> placed = LayoutChildrenOf(view);
        const std::vector<UI_Node::RectF> frames = GiveWay(state.layout, placed);
        for (std::size_t i = 0; i < frames.size(); ++i) {
            if (frames[i] == placed[i].frame)
                continue;
            state.reference = UI_SubView::ViewState::Reference{state.size, placed};
            SetFrameByLayout(children[i].get(), frames[i]);
        }
    }
    for (const auto& child : children) {
        if (auto* const inner = dynamic_cast<UI_SubView*>(child.get()))
            MakeWayBelow(inner);
    }
}

void NodeAccess::SetLaidOutSize(UI_SubView* view, LayoutSize size)
{
    view->view->size = size;
    view->view->reference.reset();
}

QObject* NodeAccess::ConnectionContext(const UI_Node* node) noexcept
{
    return node->node->events.get();
}

void NodeAccess::SetNeededSize(UI_Node* node, std::function<QSizeF()> neededSize)
{
    node->node->neededSize = std::move(neededSize);
}

bool NodeAccess::HasNeededSize(const UI_Node* node) noexcept
{
    return static_cast<bool>(node->node->neededSize);
}

QSizeF NodeAccess::NeededSize(const UI_Node* node)
{
    return HasNeededSize(node) ? node->node->neededSize() : QSizeF(0, 0);
}

void NodeAccess::SetCompanion(UI_Node* node, QWidget* companion,
                              std::function<QRect(const QRect& whole)> place)
{
    UI_Node::NodeState& state = *node->node;
    delete state.companion;
    state.companion = companion;
    state.placeCompanion = std::move(place);
    const QWidget* const widget = WidgetOf(node);
    if (companion && widget && widget->parentWidget()) {
        companion->setParent(widget->parentWidget());
        companion->setVisible(state.shown);
    }
    PlaceCompanion(node);
}

void NodeAccess::PlaceCompanion(UI_Node* node)
{
    SetFrameByLayout(node, node->UI_GetLocalRectF(true));
}

void NodeAccess::SetAccessibleStandIn(UI_Node* node, std::function<QAccessibleInterface*()> standIn)
{
    node->node->accessibleStandIn = std::move(standIn);
}

QAccessibleInterface* NodeAccess::AccessibleStandIn(const QWidget* widget)
{
    const UI_Node* const node = NodeOf(widget);
    return node && node->node->accessibleStandIn ? node->node->accessibleStandIn() : nullptr;
}

const pixmill::SupplierInterface* NodeAccess::SupplierOf(const QWidget* widget)
{
    const auto* const window = widget ? widget->window() : nullptr;
    return window ? static_cast<const pixmill::SupplierInterface*>(
                        window->property(supplierProperty).value<const void*>())
                  : nullptr;
}

void NodeAccess::SetSupplier(QWidget* window, const pixmill::SupplierInterface* supplier)
{
    window->setProperty(supplierProperty, QVariant::fromValue(static_cast<const void*>(supplier)));
}

void NodeAccess::ReportSize(UI_Node* node)
{
    const UI_Node::RectF size = node->UI_GetLocalRectF(false);
    if (size == node->node->reportedSize)
        return;
    node->node->reportedSize = size;
    node->UI_SizeChanged(size);
}

} // namespace zetui::ui
