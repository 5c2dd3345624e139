#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <QAccessible>
#include <QObject>
#include <QPointer>
#include <QRect>
#include <QSizeF>
#include <QWidget>

#include <zetui/nodes/UI_Node.h>

namespace zetui::ui {

/// The name of the widget's property that holds its node (a `UI_Node*` as `void*`).
inline constexpr char nodeProperty[] = "zetuiNode";

/// Follows the size of a node's widget, and is the context of the node's connections.
class NodeEvents : public QObject
{
  public:
    explicit NodeEvents(UI_Node* eventNode) : node(eventNode) {}
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    UI_Node* node;
};

struct UI_Node::NodeState
{
    std::string id;
    QPointer<QWidget> widget;
    std::unique_ptr<NodeEvents> events;
    UI_SubView* parent = nullptr;
    /// The frame as it was set, and the whole pixels that it became. As long as nobody else moves the widget,
    /// the frame is read back as it was set.
    RectF frame;
    QRect pixels;
    RectF reportedSize;
    /// The node's place in its layout archive; empty without one.
    std::optional<RectF> archivedFrame;
    bool shown = true;
    std::wstring tooltip;
    std::function<QSizeF()> neededSize;
    /// A widget beside the node's own, and the function that places it: it takes its part of the node's place
    /// and returns the rest.
    QPointer<QWidget> companion;
    std::function<QRect(const QRect& place)> placeCompanion;
    std::function<QAccessibleInterface*()> accessibleStandIn;
};

} // namespace zetui::ui
