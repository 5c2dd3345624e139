#pragma once

#include <memory>
#include <string>

#include <zetcore/geom/RectT.h>
#include <zetui/Export.h>
#include <zetui/nodes/KeyboardEvent.h>
#include <zetui/utility/RefCountedObjectWithWeakPtr.h>

namespace zetui::pixmill {
class Pixmill;
}

namespace zetui::ui {

class UI_SubView;

/// One element of a window, drawn and driven by the toolkit. Nodes are held by intrusive pointers, one of
/// which is the parent's. All of the user interface runs on the main thread. The flag of `UI_GetLocalRectF`
/// chooses the coordinates: true for the parent's, which say where the node is, false for the node's own, in
/// which left and top are 0.
class ZETUI_API UI_Node : public utility::RefCountedObjectWithWeakPtr
{
  public:
    using RectF = zetcore::geom::RectT<float>;

    UI_Node();

    const std::string& UI_GetID() const noexcept;
    void UI_SetID(const std::string& id);

    RectF UI_GetLocalRectF(bool inParentCoordinates) const;
    /// In the parent's coordinates.
    void UI_SetLocalRectF(const RectF& frame);
    /// From the node's own coordinates to the screen's, and back.
    RectF UI_LocalToGlobalF(const RectF& rect) const;
    RectF UI_GlobalToLocalF(const RectF& rect) const;

    void UI_Show(bool show);
    void UI_Hide(bool hide) { UI_Show(!hide); }
    /// The node's own flag, whatever its parents' flags are.
    bool UI_IsShown() const;
    void UI_SetEnabled(bool enable);
    void UI_SetDisabled(bool disable) { UI_SetEnabled(!disable); }
    /// False also while a parent is disabled.
    bool UI_IsEnabled() const;
    void UI_SetTooltip(const std::wstring& text);
    std::wstring UI_GetTooltip() const;
    /// Screen readers say this name. Unless it is set, they say the control's own text.
    void UI_SetAccessibleName(const std::wstring& name);
    /// Screen readers say it after the name. Without it they say the tooltip.
    void UI_SetAccessibleDescription(const std::wstring& description);

    /// Null for a root and for a node that is in no window.
    UI_SubView* UI_GetParentNode() const noexcept;
    /// With `orChild`, also true when a descendant has it.
    bool UI_HasKeyboardFocus(bool orChild) const;
    void UI_GainKeyboardFocus(FocusChangeReason reason);
    /// Says whether the node takes part in the Tab order.
    virtual void SetWantsKeyboardFocus(bool wants);
    void UI_Redraw();

    /// Draws the node below its children. The base draws its background, if it has one.
    virtual void UI_Draw(pixmill::Pixmill* context);
    /// Called when the node's size has changed, with its bounds in its own coordinates. The base lays out the
    /// children, if there are any.
    virtual void UI_SizeChanged(const RectF& bounds);
    /// True when the node has dealt with the event. Called for keys that nothing with the focus within the
    /// node has taken. A node with a widget of its own decides itself which keys it hands on.
    virtual bool UI_DoKeyboardEvent(UI_Node* target, const KeyboardEvent& event);

    /// The toolkit's object behind the node (a `QWidget*`). It is for the toolkit, for tests, and for hosts
    /// that know the toolkit.
    void* NativeWidget() const noexcept;

  protected:
    /// For nodes that bring a widget of their own (a `QWidget*`, which the node then owns).
    explicit UI_Node(void* nativeWidget);
    ~UI_Node() override;

  private:
    friend class UI_SubView;
    friend struct NodeAccess;
    struct NodeState;
    std::unique_ptr<NodeState> node;
};

} // namespace zetui::ui
