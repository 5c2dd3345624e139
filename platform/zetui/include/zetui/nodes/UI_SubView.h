#pragma once

#include <cstddef>
#include <memory>
#include <vector>

#include <zetui/Export.h>
#include <zetui/nodes/UI_Node.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::ui {

/// How a view lays out its children when its size changes. These are the flags of the layout archive, and
/// docs/files.md says what they do together. A layout starts from where the children were last placed, so
/// that a view that shrinks and grows again gets its old look back.
struct AutoLayout
{
    /// When it is off, children stay where they are.
    bool enabled = false;
    /// Children are arranged beside each other, and not below each other. Across that direction they keep
    /// their constraints.
    bool horizontal = false;
    /// Children keep their distances to the view's edges.
    bool maintainMargins = false;
    /// Children grow and shrink with the view.
    bool scaleChildren = false;
    bool layoutChildren = true;
};

/// The bits of the archive's constraints: these sides of a node keep their distance to the parent's, and
/// these sizes stay.
enum Constraint : unsigned
{
    kConstraintLeft = 1,
    kConstraintRight = 2,
    kConstraintTop = 4,
    kConstraintBottom = 8,
    kConstraintFixedWidth = 16,
    kConstraintFixedHeight = 32,
};

/// A node with children, which it holds.
class ZETUI_API UI_SubView : public UI_Node
{
  public:
    UI_SubView();

    /// Becomes the last (topmost) child; a node that has another parent leaves it.
    void InsertChild(const utility::IntrusivePtr<UI_Node>& child);
    void RemoveChild(UI_Node* child);
    std::size_t ChildCount() const noexcept;
    utility::IntrusivePtr<UI_Node> GetChild(std::size_t index) const;
    /// Searches depth first and begins with this node. Null when there is no such node.
    utility::IntrusivePtr<UI_Node> FindNodeForID(const std::string& id);

    void SetAutoLayout(const AutoLayout& layout);
    const AutoLayout& GetAutoLayout() const noexcept;
    void SetConstraints(unsigned constraints);
    unsigned GetConstraints() const noexcept;

    void UI_SizeChanged(const RectF& bounds) override;

  protected:
    explicit UI_SubView(void* nativeWidget);
    ~UI_SubView() override;

  private:
    friend struct NodeAccess;
    struct ViewState;
    std::unique_ptr<ViewState> view;
};

} // namespace zetui::ui
