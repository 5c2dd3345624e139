#pragma once

#include <utility>

#include <QColor>
#include <QTableView>

#include <zetui/tree/UI_MultiColumnTree.h>

#include "tree/LastColumn.h"

namespace zetui::controls {

class TreeHeader;

/// The widget of a tree. It is Qt's table view, drawn by the tree's callback. The vertical header is there
/// only for the geometry of the rows. The widget may live a little longer than its tree.
class TreeView final : public QTableView
{
  public:
    using TreeState = UI_MultiColumnTree::TreeState;

    TreeView();
    ~TreeView() override;

    /// Null when the tree is gone.
    void SetTree(TreeState* state);
    TreeState* Tree() const noexcept { return tree; }
    int RowHeight() const;
    /// Scrolls as little as is needed to see the whole row.
    void ShowPlace(int place);
    void ShowColumn(int column);
    /// The first and the last row in the visible area. When no row is visible, the second is before the
    /// first.
    std::pair<int, int> PlacesInSight() const;
    /// The width for columns. It is right even while the view has not been shown yet.
    float ContentWidth() const;
    /// The width that the column's texts need, as far as the tree's owner says.
    int NeededWidth(int column) const { return sizeHintForColumn(column); }
    /// Moves the focus from the titles to the rows.
    bool FocusRows();
    /// The same, and selects the row where the keyboard begins. False without rows.
    bool EnterRows();
    /// Opens the menu of the row at this place.
    void OpenMenuAt(int place, const QPoint& onScreen, bool byKeyboard);
    /// The point of the viewport where a menu opens by the keyboard.
    QPoint MenuPoint(int place) const;
    /// The padding that a best fit does not count.
    static int OtherPadding();
    LastColumn& Last() noexcept { return lastColumn; }
    /// Lays out now what Qt would lay out later.
    void LayOut();
    /// Moves the focus out of the list in the Tab order, from whichever of its controls has it.
    bool Leave(bool forward);

  protected:
    int sizeHintForColumn(int column) const override;
    void paintEvent(QPaintEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void scrollContentsBy(int dx, int dy) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    // Qt's own would tell screen readers of children that its table has and ours has not.
    void currentChanged(const QModelIndex& current, const QModelIndex& previous) override;
    void selectionChanged(const QItemSelection& selected, const QItemSelection& deselected) override;
    bool focusNextPrevChild(bool next) override;

  private:
    void PaintRow(QPainter& painter, int place, const QRect& exposed);
    void PaintCells(QPainter& painter, int place, const QRect& row, const QRect& exposed);
    void PaintFocus(QPainter& painter);
    void PaintEmptyText(QPainter& painter);
    QColor RowColor(int place) const;
    bool HasFocusWithin() const;
    int PlaceAtOrNear(int y) const;
    void SetHoverPlace(int place);
    QRect RowRect(int place) const;
    void ConnectHeader();
    /// Tells screen readers which cell has the focus.
    void TellOfFocus();
    TreeHeader& Header() const;

    TreeState* tree = nullptr;
    LastColumn lastColumn{*this};
    int hoverPlace = -1;
    bool leaving = false;
};

} // namespace zetui::controls
