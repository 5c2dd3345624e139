#include "tree/TreeView.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QResizeEvent>
#include <QScrollBar>

#include "application/HandlerErrors.h"
#include "tree/AccessibleTree.h"
#include "tree/TreeHeader.h"
#include "tree/TreeState.h"

namespace zetui::controls {

namespace {

constexpr int smallestColumn = 24;

} // namespace

TreeView::TreeView()
{
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setShowGrid(false);
    setWordWrap(false);
    setCornerButtonEnabled(false);
    setTabKeyNavigation(false);
    // Rows are brought into sight by those who want it, and not by each change of the current one.
    setAutoScroll(false);
    setFocusPolicy(Qt::NoFocus);
    viewport()->setMouseTracking(true);
    verticalHeader()->hide();
    verticalHeader()->setMinimumSectionSize(1);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setHorizontalHeader(
        new TreeHeader(this, [this](int column) { return tree && tree->model.KeepsPlace(column); }));
    // The controls in its cells are placed by its own width.
    lastColumn.SetKeepsWidth([this](int column) { return tree && tree->model.KeepsPlace(column); });
    horizontalHeader()->setMinimumSectionSize(smallestColumn);
    horizontalHeader()->hide();
    UseAccessibleTrees();
}

TreeView::~TreeView() = default;

void TreeView::SetTree(TreeState* state)
{
    tree = state;
    if (!tree) {
        setModel(nullptr);
        return;
    }
    verticalHeader()->setDefaultSectionSize(std::max(1, static_cast<int>(std::lround(tree->rowHeight))));
    setModel(&tree->model);
    ConnectHeader();
}

void TreeView::ConnectHeader()
{
    QHeaderView* const header = horizontalHeader();
    connect(header, &QHeaderView::sectionResized, this, [this](int column, int from, int to) {
        const bool byItself = lastColumn.IsUpdating();
        if (!byItself)
            lastColumn.OnResized(column, from, to);
        if (!tree)
            return;
        tree->cells.Place();
        if (!byItself)
            tree->UpdateVisibleRowsLater();
    });
    connect(header, &QHeaderView::sectionHandleDoubleClicked, this, [this](int column) {
        // Qt has fitted the column as it is seen, with both paddings. Its own width counts one of them.
        const int shown = std::max(sizeHintForColumn(column), horizontalHeader()->sectionSizeHint(column));
        lastColumn.FitWidth(column, shown - OtherPadding(), OtherPadding());
        lastColumn.Choose(column);
    });
    connect(header, &QHeaderView::sectionCountChanged, this, [this] { lastColumn.Update(); });
    connect(header, &QHeaderView::sectionMoved, this, [this] {
        lastColumn.Update();
        if (tree)
            tree->UpdateVisibleRows(true);
    });
    connect(header, &QHeaderView::sortIndicatorChanged, this, [this](int column, Qt::SortOrder direction) {
        if (tree)
            tree->SortByHeader(column, direction == Qt::AscendingOrder);
    });
}

int TreeView::RowHeight() const
{
    return verticalHeader()->defaultSectionSize();
}

void TreeView::LayOut()
{
    doItemsLayout();
}

void TreeView::ShowPlace(int place)
{
    const int height = RowHeight();
    const int top = place * height;
    QScrollBar* const bar = verticalScrollBar();
    if (top < bar->value() || height >= viewport()->height())
        bar->setValue(top);
    else if (top + height > bar->value() + viewport()->height())
        bar->setValue(top + height - viewport()->height());
}

void TreeView::ShowColumn(int column)
{
    if (column < 0)
        return;
    const int left = columnViewportPosition(column);
    const int right = left + columnWidth(column);
    QScrollBar* const bar = horizontalScrollBar();
    if (left < 0 || right - left >= viewport()->width())
        bar->setValue(bar->value() + left);
    else if (right > viewport()->width())
        bar->setValue(bar->value() + right - viewport()->width());
}

std::pair<int, int> TreeView::PlacesInSight() const
{
    const int count = model() ? model()->rowCount() : 0;
    if (count == 0 || viewport()->height() <= 0)
        return {0, -1};
    const int first = std::max(0, verticalScrollBar()->value() / RowHeight());
    const int last = (verticalScrollBar()->value() + viewport()->height() - 1) / RowHeight();
    return {first, std::min(last, count - 1)};
}

float TreeView::ContentWidth() const
{
    if (isVisible())
        return static_cast<float>(viewport()->width());
    // Children of a widget that has not been shown are not laid out yet.
    int room = width() - 2 * frameWidth();
    const int rows = model() ? model()->rowCount() : 0;
    const int header = horizontalHeader()->isHidden() ? 0 : horizontalHeader()->sizeHint().height();
    if (rows * RowHeight() > height() - 2 * frameWidth() - header)
        room -= verticalScrollBar()->sizeHint().width();
    return static_cast<float>(std::max(0, room));
}

int TreeView::OtherPadding()
{
    return static_cast<int>(std::ceil(UI_MultiColumnTree::GetDefaultCellPadding().second));
}

int TreeView::sizeHintForColumn(int column) const
{
    float width = 0;
    if (tree && tree->bestFitWidth && column >= 0 && column < tree->model.columnCount()) {
        ui::CallFromToolkit(
            [&] { width = tree->bestFitWidth(tree->model.Columns()[static_cast<std::size_t>(column)].id); });
    }
    // The best fit counts one padding, and the text stands between two.
    if (width > 0)
        width += static_cast<float>(OtherPadding());
    return static_cast<int>(std::ceil(width));
}

void TreeView::showEvent(QShowEvent* event)
{
    QTableView::showEvent(event);
    lastColumn.Update();
    if (tree) {
        tree->Flush();
        tree->UpdateVisibleRows(false);
    }
}

void TreeView::resizeEvent(QResizeEvent* event)
{
    // The columns are updated before Qt looks whether they need a scroll bar.
    lastColumn.Update();
    const int selected = tree ? tree->FirstSelectedPlace() : -1;
    const bool wasInSight = selected >= 0 && RowRect(selected).bottom() < event->oldSize().height() &&
                            RowRect(selected).top() >= 0;
    QTableView::resizeEvent(event);
    if (!tree)
        return;
    // A row that the user has scrolled away stays away.
    if (wasInSight)
        ShowPlace(selected);
    if (const int columns = tree->model.columnCount(); tree->rightMargin && columns > 0) {
        const int room = viewport()->width() - horizontalHeader()->sectionPosition(columns - 1);
        const int width = room - static_cast<int>(std::lround(*tree->rightMargin));
        horizontalHeader()->resizeSection(columns - 1, std::max(smallestColumn, width));
    }
    tree->UpdateVisibleRows(false);
}

void TreeView::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    if (tree)
        tree->UpdateVisibleRows(false);
}

void TreeView::keyPressEvent(QKeyEvent* event)
{
    bool taken = false;
    if (tree)
        ui::CallFromToolkit([&] { taken = tree->keyboard.Press(*event); });
    event->setAccepted(taken);
}

bool TreeView::focusNextPrevChild(bool next)
{
    bool moved = false;
    if (tree && !leaving)
        ui::CallFromToolkit([&] { moved = tree->keyboard.MoveThroughControls(next); });
    if (!moved && !leaving && !next && hasFocus() && Header().CanHaveFocus()) {
        Header().setFocus(Qt::BacktabFocusReason);
        return true;
    }
    return moved || QTableView::focusNextPrevChild(next);
}

TreeHeader& TreeView::Header() const
{
    return static_cast<TreeHeader&>(*horizontalHeader());
}

bool TreeView::FocusRows()
{
    leaving = true;
    setFocus(Qt::TabFocusReason);
    leaving = false;
    return true;
}

bool TreeView::EnterRows()
{
    return tree && tree->owner.EnterRows();
}

bool TreeView::Leave(bool forward)
{
    leaving = true;
    setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    focusNextPrevChild(forward);
    leaving = false;
    return true;
}

int TreeView::PlaceAtOrNear(int y) const
{
    const int count = tree->model.rowCount();
    const int place =
        (verticalScrollBar()->value() + std::clamp(y, 0, viewport()->height() - 1)) / RowHeight();
    return std::min(place, count - 1);
}

void TreeView::mousePressEvent(QMouseEvent* event)
{
    event->accept();
    if (!tree || event->button() != Qt::LeftButton)
        return;
    tree->Flush();
    const TreeState::SelectionChange change(*tree);
    const QPoint at = event->position().toPoint();
    const int place = rowAt(at.y());
    const bool range = event->modifiers().testFlag(Qt::ShiftModifier) && tree->options.multipleSelections;
    const bool one = event->modifiers().testFlag(Qt::ControlModifier);
    if (place < 0) {
        if (!range && !one && tree->options.deselectOnEmptyClick && tree->options.noneSelected)
            tree->DeselectAll();
        return;
    }
    if (range) {
        const int anchor = tree->keyboard.Anchor();
        tree->SelectRange(anchor < 0 ? place : std::min(anchor, tree->model.rowCount() - 1), place);
        return;
    }
    tree->keyboard.SetAnchor(place);
    if (!one) {
        tree->SelectOnly(place, tree->PositionOfColumn(columnAt(at.x())));
        ShowPlace(place);
    } else if (!tree->IsSelected(place)) {
        tree->SelectAlso(place, true);
    } else if (tree->options.noneSelected || tree->SelectedRows().size() > 1) {
        tree->SelectAlso(place, false);
    }
}

void TreeView::mouseDoubleClickEvent(QMouseEvent* event)
{
    mousePressEvent(event);
}

void TreeView::mouseReleaseEvent(QMouseEvent* event)
{
    event->accept();
}

void TreeView::mouseMoveEvent(QMouseEvent* event)
{
    event->accept();
    if (!tree)
        return;
    const QPoint at = event->position().toPoint();
    SetHoverPlace(viewport()->rect().contains(at) ? rowAt(at.y()) : -1);
    const int anchor = tree->keyboard.Anchor();
    if (!event->buttons().testFlag(Qt::LeftButton) || event->modifiers() != Qt::NoModifier ||
        !tree->options.multipleSelections || anchor < 0 || anchor >= tree->model.rowCount())
        return;
    const int place = PlaceAtOrNear(at.y());
    if (place != anchor || tree->SelectedRows().size() > 1) {
        ShowPlace(place);
        tree->SelectRange(anchor, place);
    }
}

bool TreeView::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::Leave)
        SetHoverPlace(-1);
    return QTableView::viewportEvent(event);
}

QRect TreeView::RowRect(int place) const
{
    return {0, place * RowHeight() - verticalScrollBar()->value(), viewport()->width(), RowHeight()};
}

void TreeView::SetHoverPlace(int place)
{
    if (place == hoverPlace)
        return;
    for (const int changed : {hoverPlace, place}) {
        if (changed >= 0)
            viewport()->update(RowRect(changed));
    }
    hoverPlace = place;
}

void TreeView::focusInEvent(QFocusEvent* event)
{
    QTableView::focusInEvent(event);
    // The titles come before the rows. A dialog that opens tells its focus widget of a Tab that was none.
    if (event->reason() == Qt::TabFocusReason && hasFocus() && !leaving && Header().CanHaveFocus()) {
        Header().setFocus(Qt::TabFocusReason);
        return;
    }
    viewport()->update();
    // Qt tells of the list itself when this is done, and what it tells last counts.
    QMetaObject::invokeMethod(this, &TreeView::TellOfFocus, Qt::QueuedConnection);
}

void TreeView::TellOfFocus()
{
    if (!QAccessible::isActive() || !hasFocus())
        return;
    const AccessibleTree* const table = AccessibleTree::Of(this);
    if (QAccessibleInterface* const cell = table ? table->FocusedCell() : nullptr) {
        QAccessibleEvent focus(cell, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void TreeView::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    QAbstractItemView::currentChanged(current, previous);
    TellOfFocus();
}

void TreeView::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QAbstractItemView::selectionChanged(selected, deselected);
    if (QAccessible::isActive()) {
        QAccessibleEvent change(this, QAccessible::SelectionWithin);
        QAccessible::updateAccessibility(&change);
    }
}

void TreeView::focusOutEvent(QFocusEvent* event)
{
    QTableView::focusOutEvent(event);
    viewport()->update();
}

} // namespace zetui::controls
