#pragma once

#include <functional>
#include <utility>
#include <vector>

#include <QAccessible>
#include <QObject>
#include <QSizeF>
#include <QWidget>

#include <zetui/nodes/UI_Node.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/pixmill/SupplierInterface.h>

#include "nodes/AutomaticLayout.h"

namespace zetui::ui {

/// The toolkit's own way to what is behind nodes. Main thread. A node owns its widget until Qt deletes the
/// widget with its parent. From then on `WidgetOf` is null, and the node's operations do nothing. A node that
/// dies deletes its widget when control is back in the event loop, so that a handler may drop the node whose
/// event it handles.
struct NodeAccess
{
    /// Null when Qt has deleted it.
    static QWidget* WidgetOf(const UI_Node* node) noexcept;
    /// The node that this very widget belongs to, or null.
    static UI_Node* NodeOf(const QWidget* widget);
    /// The node of the widget or of its nearest ancestor that has one, or null.
    static UI_Node* NearestNode(const QWidget* widget);

    /// Makes a widget for a node's constructor, which takes it. Throws `std::runtime_error` where there are
    /// no windows, because a widget would end the program there.
    template<typename Widget, typename... Arguments>
    static void* NewWidget(Arguments&&... arguments)
    {
        RequireWindows();
        return static_cast<QWidget*>(new Widget(std::forward<Arguments>(arguments)...));
    }
    static void RequireWindows();

    /// Puts the node's widget into a widget that is not (or not directly) its parent node's. It is shown or
    /// hidden as the node's flag says. `UI_GetParentNode` gives `parentNode` then, which may be null and does
    /// not hold the node.
    static void Embed(UI_Node* node, QWidget* into, UI_SubView* parentNode);
    /// Takes the node's widget out again. The widget is then in no window.
    static void TakeOut(UI_Node* node);
    /// Moves the widget by a layout of its own. The automatic layout does not remember the place.
    static void SetFrameByLayout(UI_Node* node, const UI_Node::RectF& frame);

    /// Places the node as its layout archive says, and remembers the place.
    static void PlaceAsArchived(UI_Node* node, const UI_Node::RectF& frame);
    /// Places the view and all nodes below it where their archive placed them.
    static void ReturnToArchivedPlaces(UI_SubView* view);

    /// The children's frames and constraints, in order.
    static std::vector<LayoutChild> LayoutChildrenOf(const UI_SubView* view);
    /// To be called when somebody else has placed the children. The automatic layout starts from their
    /// places.
    static void ForgetLayout(UI_SubView* view);
    /// Lets children give way to each other in the views below this one in which somebody has placed them
    /// since the last layout.
    static void MakeWayBelow(UI_SubView* view);
    /// Says that the children are where they belong in a view of this size.
    static void SetLaidOutSize(UI_SubView* view, LayoutSize size);

    /// The context of connections that must end with the node. It dies before all else that the node has.
    static QObject* ConnectionContext(const UI_Node* node) noexcept;
    /// Sets the size that the node's text needs, for the pass that makes room for texts. A null function
    /// means that any size will do.
    static void SetNeededSize(UI_Node* node, std::function<QSizeF()> neededSize);
    static bool HasNeededSize(const UI_Node* node) noexcept;
    static QSizeF NeededSize(const UI_Node* node);

    /// Gives the node a second widget, which it then owns. The two have the node's place, parent and
    /// visibility together: `place` puts the companion into its part of the node's place, in the parent's
    /// coordinates, and returns the part that is left for the node's own widget.
    static void SetCompanion(UI_Node* node, QWidget* companion,
                             std::function<QRect(const QRect& whole)> place);
    /// To be called when the companion needs more room, or less.
    static void PlaceCompanion(UI_Node* node);
    /// Says what screen readers see in the place of a view: its children are children of that. A null
    /// function means the view itself.
    static void SetAccessibleStandIn(UI_Node* node, std::function<QAccessibleInterface*()> standIn);
    /// Null when nothing stands in for the widget.
    static QAccessibleInterface* AccessibleStandIn(const QWidget* widget);

    /// The drawing supplier of the widget's window. Null stands for the toolkit's own.
    static const pixmill::SupplierInterface* SupplierOf(const QWidget* widget);
    static void SetSupplier(QWidget* window, const pixmill::SupplierInterface* supplier);

    /// Tells the node its size, unless it was told the same size last.
    static void ReportSize(UI_Node* node);
};

inline QWidget* WidgetOf(const UI_Node* node) noexcept
{
    return NodeAccess::WidgetOf(node);
}

} // namespace zetui::ui
