#include "nodes/NodeWidget.h"

#include <QKeyEvent>
#include <QPainter>

#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/pixmill/Pixmill.h>

#include "application/HandlerErrors.h"
#include "nodes/KeyEvents.h"
#include "nodes/NodeAccess.h"

namespace zetui::ui {

NodeWidget::NodeWidget() : QWidget(nullptr) {}

void NodeWidget::paintEvent(QPaintEvent*)
{
    UI_Node* const node = NodeAccess::NodeOf(this);
    if (!node)
        return;
    QPainter painter(this);
    CallFromToolkit([&] {
        pixmill::Pixmill context(&painter, NodeAccess::SupplierOf(this));
        node->UI_Draw(&context);
    });
}

void NodeWidget::keyPressEvent(QKeyEvent* event)
{
    event->ignore();
    const utility::IntrusivePtr<UI_Node> node(NodeAccess::NodeOf(this));
    if (!node)
        return;
    CallFromToolkit([&] {
        if (node->UI_DoKeyboardEvent(UI_NodeManager::Get(false)->GetFocusNode(), KeyboardEventOf(*event)))
            event->accept();
    });
}

} // namespace zetui::ui
