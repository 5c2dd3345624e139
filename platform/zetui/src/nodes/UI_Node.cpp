#include <zetui/nodes/UI_Node.h>

#include <QApplication>
#include <QEvent>
#include <QVariant>

#include <zetcore/threads/MainThread.h>
#include <zetui/nodes/UI_SubView.h>

#include "application/HandlerErrors.h"
#include "nodes/NodeAccess.h"
#include "nodes/NodeState.h"
#include "nodes/NodeWidget.h"
#include "pixmill/QtConversions.h"

namespace zetui::ui {

namespace {

Qt::FocusReason QtReasonOf(FocusChangeReason reason)
{
    switch (reason) {
    case kFocusChangeMouse:
        return Qt::MouseFocusReason;
    case kFocusChangeTab:
        return Qt::TabFocusReason;
    default:
        return Qt::OtherFocusReason;
    }
}

} // namespace

bool NodeEvents::eventFilter(QObject*, QEvent* event)
{
    if (event->type() == QEvent::Resize)
        CallFromToolkit([this] { NodeAccess::ReportSize(node); });
    return false;
}

UI_Node::UI_Node() : UI_Node(NodeAccess::NewWidget<NodeWidget>()) {}

UI_Node::UI_Node(void* nativeWidget)
{
    zetcore::threads::AssertMainThread();
    std::unique_ptr<QWidget> widget(static_cast<QWidget*>(nativeWidget));
    node = std::make_unique<NodeState>();
    node->events = std::make_unique<NodeEvents>(this);
    widget->setProperty(nodeProperty, QVariant::fromValue(static_cast<void*>(this)));
    widget->installEventFilter(node->events.get());
    widget->setGeometry(0, 0, 0, 0);
    node->pixels = widget->geometry();
    node->widget = widget.release();
}

UI_Node::~UI_Node()
{
    node->events.reset();
    if (QWidget* const widget = node->widget)
        widget->setProperty(nodeProperty, QVariant());
    for (QWidget* const widget : {node->widget.data(), node->companion.data()}) {
        // The widget is deleted later, because a handler may have dropped the node whose widget is delivering
        // the event. Without an application object, a widget cannot be deleted any more.
        if (widget && QCoreApplication::instance()) {
            widget->hide();
            widget->deleteLater();
        }
    }
}

const std::string& UI_Node::UI_GetID() const noexcept
{
    return node->id;
}

void UI_Node::UI_SetID(const std::string& id)
{
    zetcore::threads::AssertMainThread();
    node->id = id;
    if (QWidget* const widget = node->widget)
        widget->setObjectName(QString::fromStdString(id));
}

UI_Node::RectF UI_Node::UI_GetLocalRectF(bool inParentCoordinates) const
{
    RectF frame = node->frame;
    const QWidget* const widget = node->widget;
    if (widget && widget->geometry() != node->pixels) {
        const QRect pixels = widget->geometry();
        frame = {static_cast<float>(pixels.left()), static_cast<float>(pixels.top()),
                 static_cast<float>(pixels.width()), static_cast<float>(pixels.height())};
    }
    return inParentCoordinates ? frame : RectF{0, 0, frame.width, frame.height};
}

void UI_Node::UI_SetLocalRectF(const RectF& frame)
{
    zetcore::threads::AssertMainThread();
    if (node->parent)
        NodeAccess::ForgetLayout(node->parent);
    NodeAccess::SetFrameByLayout(this, frame);
}

UI_Node::RectF UI_Node::UI_LocalToGlobalF(const RectF& rect) const
{
    const QWidget* const widget = node->widget;
    if (!widget)
        return rect;
    const QPointF global = widget->mapToGlobal(QPointF(rect.left, rect.top));
    return {static_cast<float>(global.x()), static_cast<float>(global.y()), rect.width, rect.height};
}

UI_Node::RectF UI_Node::UI_GlobalToLocalF(const RectF& rect) const
{
    const QWidget* const widget = node->widget;
    if (!widget)
        return rect;
    const QPointF local = widget->mapFromGlobal(QPointF(rect.left, rect.top));
    return {static_cast<float>(local.x()), static_cast<float>(local.y()), rect.width, rect.height};
}

void UI_Node::UI_Show(bool show)
{
    zetcore::threads::AssertMainThread();
    node->shown = show;
    for (QWidget* const widget : {node->widget.data(), node->companion.data()}) {
        // Shown without a parent, a widget would become a window.
        if (widget && widget->parentWidget())
            widget->setVisible(show);
    }
}

bool UI_Node::UI_IsShown() const
{
    return node->shown;
}

void UI_Node::UI_SetEnabled(bool enable)
{
    zetcore::threads::AssertMainThread();
    if (QWidget* const widget = node->widget)
        widget->setEnabled(enable);
}

bool UI_Node::UI_IsEnabled() const
{
    const QWidget* const widget = node->widget;
    return widget && widget->isEnabled();
}

void UI_Node::UI_SetTooltip(const std::wstring& text)
{
    zetcore::threads::AssertMainThread();
    node->tooltip = text;
    if (QWidget* const widget = node->widget)
        widget->setToolTip(pixmill::PlainForTooltip(text));
}

std::wstring UI_Node::UI_GetTooltip() const
{
    return node->tooltip;
}

void UI_Node::UI_SetAccessibleName(const std::wstring& name)
{
    if (QWidget* const widget = node->widget)
        widget->setAccessibleName(pixmill::ToQString(name));
}

void UI_Node::UI_SetAccessibleDescription(const std::wstring& description)
{
    if (QWidget* const widget = node->widget)
        widget->setAccessibleDescription(pixmill::ToQString(description));
}

UI_SubView* UI_Node::UI_GetParentNode() const noexcept
{
    return node->parent;
}

bool UI_Node::UI_HasKeyboardFocus(bool orChild) const
{
    const QWidget* const widget = node->widget;
    const QWidget* const focus = QApplication::focusWidget();
    if (!widget || !focus)
        return false;
    return widget == focus || (orChild && widget->isAncestorOf(focus));
}

void UI_Node::UI_GainKeyboardFocus(FocusChangeReason reason)
{
    if (QWidget* const widget = node->widget)
        widget->setFocus(QtReasonOf(reason));
}

void UI_Node::SetWantsKeyboardFocus(bool wants)
{
    if (QWidget* const widget = node->widget)
        widget->setFocusPolicy(wants ? Qt::StrongFocus : Qt::NoFocus);
}

void UI_Node::UI_Redraw()
{
    if (QWidget* const widget = node->widget)
        widget->update();
}

void UI_Node::UI_Draw(pixmill::Pixmill*) {}

void UI_Node::UI_SizeChanged(const RectF&) {}

bool UI_Node::UI_DoKeyboardEvent(UI_Node*, const KeyboardEvent&)
{
    return false;
}

void* UI_Node::NativeWidget() const noexcept
{
    return node->widget.data();
}

} // namespace zetui::ui
