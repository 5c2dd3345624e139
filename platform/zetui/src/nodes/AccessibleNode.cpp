#include "nodes/AccessibleNode.h"

#include <QWidget>

#include "application/AccessibleFactories.h"
#include "nodes/NodeAccess.h"
#include "nodes/NodeWidget.h"
#include "nodes/ReadingOrder.h"
#include "pixmill/QtConversions.h"

namespace zetui::ui {

AccessibleNode::AccessibleNode(QWidget* widget, QAccessible::Role role) : QAccessibleWidget(widget, role) {}

AccessibleNode::~AccessibleNode() = default;

QAccessibleInterface* AccessibleNode::parent() const
{
    if (QAccessibleInterface* const standIn = NodeAccess::AccessibleStandIn(widget()->parentWidget()))
        return standIn;
    return QAccessibleWidget::parent();
}

QString AccessibleNode::text(QAccessible::Text kind) const
{
    if (kind != QAccessible::Description)
        return QAccessibleWidget::text(kind);
    QString description = widget()->accessibleDescription();
    if (description.isEmpty()) {
        const UI_Node* const node = NodeAccess::NodeOf(widget());
        description = node ? pixmill::ToQString(node->UI_GetTooltip()) : widget()->toolTip();
    }
    return description == text(QAccessible::Name) ? QString() : description;
}

QRect AccessibleNode::rect() const
{
    const QRect whole = QAccessibleWidget::rect();
    const QAccessibleInterface* const standIn = NodeAccess::AccessibleStandIn(widget()->parentWidget());
    return standIn ? whole & standIn->rect() : whole;
}

AccessibleView::AccessibleView(QWidget* widget) : AccessibleNode(widget) {}

AccessibleView::~AccessibleView() = default;

std::vector<QWidget*> AccessibleView::Children() const
{
    std::vector<QWidget*> shown;
    std::vector<QRect> places;
    for (QWidget* const child : widget()->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
        if (child->isWindow() || child->isHidden())
            continue;
        shown.push_back(child);
        places.push_back(child->geometry());
    }
    std::vector<QWidget*> children;
    for (const int index : ReadingOrder(places))
        children.push_back(shown[static_cast<std::size_t>(index)]);
    return children;
}

int AccessibleView::childCount() const
{
    return static_cast<int>(Children().size());
}

QAccessibleInterface* AccessibleView::child(int index) const
{
    const std::vector<QWidget*> children = Children();
    if (index < 0 || index >= static_cast<int>(children.size()))
        return nullptr;
    return QAccessible::queryAccessibleInterface(children[static_cast<std::size_t>(index)]);
}

int AccessibleView::indexOfChild(const QAccessibleInterface* child) const
{
    const std::vector<QWidget*> children = Children();
    for (std::size_t index = 0; child && index < children.size(); ++index) {
        if (children[index] == child->object())
            return static_cast<int>(index);
    }
    return -1;
}

void UseAccessibleNodes()
{
    UseAccessibleFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* const view = dynamic_cast<NodeWidget*>(object);
        return view ? new AccessibleView(view) : nullptr;
    });
}

} // namespace zetui::ui
