#pragma once

#include <functional>

#include <QHeaderView>

namespace zetui::controls {

class TreeView;

/// The titles of a tree. A column may keep its place: it cannot be dragged, and no other column can be
/// dragged past it. While the titles have the focus, one of them is framed: Left, Right, Home and End choose
/// it, Space and Return sort by it, Shift with Left and Right resizes it, Control with them moves it, and
/// Control with Plus fits it to its texts.
class TreeHeader final : public QHeaderView
{
  public:
    /// True when the column with this index keeps its place.
    using KeepsPlace = std::function<bool(int column)>;
    TreeHeader(QWidget* parent, KeepsPlace keepsPlace);

    /// The column whose title is framed; -1 without columns.
    int FramedColumn() const;
    /// Does what a click on the title does: sorts by it, or, where that is so already, turns the order round.
    void Sort(int column);
    /// The titles of a tree that is not a list of one nameless column can have the focus.
    bool CanHaveFocus() const;

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void paintSection(QPainter* painter, const QRect& rect, int column) const override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    bool viewportEvent(QEvent* event) override;

  private:
    TreeView& View() const;
    bool Press(const QKeyEvent& event);
    void Frame(int column);
    void Resize(int column, int step);
    void Fit(int column);
    /// Moves the column by one place, unless one of the two keeps its place.
    void Move(int column, int step);
    void TellOfFrame() const;

    // Dragging a title. The line shows where the column would go. Where it may not go, there is no line, and
    // the pointer says so.
    bool IsEdge(int x) const;
    int DropPlace(int x) const;
    bool MayMove(int from, int to) const;
    void ShowDrag(int x);
    void EndDrag();

    KeepsPlace keepsPlace;
    /// The column whose title was pressed; -1 for none.
    int pressed = -1;
    QPoint pressedAt;
    bool dragging = false;
    QWidget* dropLine;
    int framed = -1;
};

} // namespace zetui::controls
