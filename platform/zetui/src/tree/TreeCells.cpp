#include "tree/TreeCells.h"

#include <algorithm>

#include <QAbstractButton>
#include <QApplication>
#include <QChildEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

#include "application/HandlerErrors.h"
#include "nodes/NodeAccess.h"
#include "tree/AccessibleTree.h"
#include "tree/TreeState.h"

namespace zetui::controls {

TreeCells::TreeCells(TreeState& treeState) : state(treeState) {}

TreeCells::~TreeCells() = default;

const TreeCells::VisibleRow* TreeCells::Find(const UI_MultiColumnTreeRow* row) const noexcept
{
    const auto found = std::find_if(visible.begin(), visible.end(),
                                    [row](const auto& item) { return item.row.get() == row; });
    return found == visible.end() ? nullptr : &*found;
}

bool TreeCells::IsVisible(const UI_MultiColumnTreeRow* row) const noexcept
{
    return Find(row) != nullptr;
}

void TreeCells::SetVisible(std::vector<RowPtr> rows, const std::function<void(const RowPtr&)>& changed,
                           bool renew)
{
    const auto leaves = [&](const VisibleRow& item) {
        return renew || std::find(rows.begin(), rows.end(), item.row) == rows.end();
    };
    std::vector<VisibleRow> left;
    for (VisibleRow& item : visible) {
        if (leaves(item))
            left.push_back(std::exchange(item, {}));
    }
    std::erase_if(visible, [](const VisibleRow& item) { return !item.row; });
    for (VisibleRow& item : left) {
        changed(item.row);
        Drop(item);
    }
    for (const RowPtr& row : rows) {
        // The callback may have removed rows.
        if (row->GetTree() != &state.owner || IsVisible(row.get()))
            continue;
        visible.push_back({row, {}});
        changed(row);
        Adopt(row.get());
    }
    Place();
}

void TreeCells::Clear()
{
    for (VisibleRow& item : std::exchange(visible, {}))
        Drop(item);
}

void TreeCells::Drop(VisibleRow& left)
{
    TreeView* const view = state.view;
    for (const CellView& cell : left.views) {
        QWidget* const widget = ui::WidgetOf(cell.get());
        if (!widget)
            continue;
        // A focused control that is hidden hands the focus to the next control in the window, so the list
        // takes it first.
        if (view && QApplication::focusWidget() && widget->isAncestorOf(QApplication::focusWidget()))
            view->setFocus(Qt::OtherFocusReason);
        ui::NodeAccess::SetAccessibleStandIn(cell.get(), {});
        ui::NodeAccess::TakeOut(cell.get());
    }
    left.views.clear();
}

TreeCells::CellView TreeCells::ViewAt(UI_MultiColumnTreeRow& row, int position)
{
    if (state.ColumnAtPosition(position) < 0)
        return nullptr;
    auto* const shown = const_cast<VisibleRow*>(Find(&row));
    if (!shown)
        return utility::MakeIntrusive<ui::UI_SubView>();
    if (shown->views.size() <= static_cast<std::size_t>(position))
        shown->views.resize(static_cast<std::size_t>(position) + 1);
    CellView& cell = shown->views[static_cast<std::size_t>(position)];
    if (!cell) {
        cell = utility::MakeIntrusive<ui::UI_SubView>();
        QWidget* const widget = ui::WidgetOf(cell.get());
        widget->installEventFilter(this);
        // The list must see the mouse move over the control.
        widget->setMouseTracking(true);
        PlaceView(*shown, position);
        ui::NodeAccess::SetAccessibleStandIn(cell.get(), [this, widget] { return AccessibleCellOf(widget); });
        ui::NodeAccess::Embed(cell.get(), state.view->viewport(), &state.owner);
    }
    return cell;
}

TreeCells::CellView TreeCells::ShownViewAt(const UI_MultiColumnTreeRow* row, int position) const
{
    const VisibleRow* const shown = row ? Find(row) : nullptr;
    if (!shown || position < 0 || position >= static_cast<int>(shown->views.size()))
        return nullptr;
    return shown->views[static_cast<std::size_t>(position)];
}

QAccessibleInterface* TreeCells::AccessibleCellOf(const QWidget* widget) const
{
    const auto [row, position] = CellOf(widget);
    const AccessibleTree* const table = row ? AccessibleTree::Of(state.view) : nullptr;
    return table ? table->cellAt(state.model.PlaceOf(row.get()), position) : nullptr;
}

QWidget* TreeCells::WidgetAt(const UI_MultiColumnTreeRow* row, int position) const
{
    const CellView cell = ShownViewAt(row, position);
    return cell && cell->ChildCount() > 0 ? ui::WidgetOf(cell->GetChild(0).get()) : nullptr;
}

void TreeCells::PlaceView(const VisibleRow& row, int position)
{
    const int column = state.ColumnAtPosition(position);
    const int place = state.model.PlaceOf(row.row.get());
    if (!state.view || column < 0 || place < 0)
        return;
    ui::NodeAccess::SetFrameByLayout(row.views[static_cast<std::size_t>(position)].get(),
                                     {static_cast<float>(state.view->columnViewportPosition(column)),
                                      static_cast<float>(state.view->rowViewportPosition(place)),
                                      static_cast<float>(state.view->columnWidth(column)),
                                      static_cast<float>(state.view->RowHeight())});
}

void TreeCells::Place()
{
    for (const VisibleRow& row : visible) {
        for (std::size_t position = 0; position < row.views.size(); ++position) {
            if (row.views[position])
                PlaceView(row, static_cast<int>(position));
        }
    }
}

/// Takes the controls of cells out of the window's Tab order, because the list itself moves the focus among
/// them.
void TreeCells::Adopt(const UI_MultiColumnTreeRow* row)
{
    const VisibleRow* const shown = Find(row);
    if (!shown)
        return;
    for (const CellView& cell : shown->views) {
        const QWidget* const widget = ui::WidgetOf(cell.get());
        if (!widget)
            continue;
        for (QWidget* const control : widget->findChildren<QWidget*>()) {
            if (control->focusPolicy() & Qt::TabFocus)
                control->setFocusPolicy(Qt::ClickFocus);
            if (const auto* const button = dynamic_cast<QAbstractButton*>(control))
                connect(button, &QAbstractButton::toggled, this, [this, button] { TellOfToggle(*button); });
        }
    }
}

/// A screen reader says of a cell what its box shows.
void TreeCells::TellOfToggle(const QAbstractButton& box) const
{
    QAccessibleInterface* const cell = QAccessible::isActive() ? AccessibleCellOf(&box) : nullptr;
    if (!cell)
        return;
    QAccessible::State changed;
    changed.checked = true;
    QAccessibleStateChangeEvent toggled(cell, changed);
    QAccessible::updateAccessibility(&toggled);
    QAccessibleEvent renamed(cell, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&renamed);
}

std::vector<QWidget*> TreeCells::ControlsOf(const UI_MultiColumnTreeRow* row) const
{
    std::vector<QWidget*> controls;
    const VisibleRow* const shown = Find(row);
    if (!shown)
        return controls;
    for (const CellView& cell : shown->views) {
        const QWidget* const widget = ui::WidgetOf(cell.get());
        if (!widget)
            continue;
        for (QWidget* const control : widget->findChildren<QWidget*>()) {
            if (control->focusPolicy() != Qt::NoFocus && control->isEnabled() && control->isVisible())
                controls.push_back(control);
        }
    }
    return controls;
}

std::pair<TreeCells::RowPtr, int> TreeCells::CellOf(const QWidget* widget) const
{
    for (const VisibleRow& row : visible) {
        for (std::size_t position = 0; position < row.views.size(); ++position) {
            const QWidget* const cell = ui::WidgetOf(row.views[position].get());
            if (widget && cell && (cell == widget || cell->isAncestorOf(widget)))
                return {row.row, static_cast<int>(position)};
        }
    }
    return {nullptr, -1};
}

bool TreeCells::HasFocusIn(const UI_MultiColumnTreeRow* row, int position) const
{
    const auto [focusRow, focusPosition] = CellOf(QApplication::focusWidget());
    return focusRow && focusRow.get() == row && focusPosition == position;
}

bool TreeCells::HaveFocus() const
{
    const QWidget* const focus = QApplication::focusWidget();
    return focus && CellOf(focus).first;
}

/// The details are those of the row that has the keyboard, however it came there.
void TreeCells::SelectFocusedRow(const RowPtr& row, int position)
{
    const int place = state.model.PlaceOf(row.get());
    if (place >= 0 && !state.IsSelected(place))
        state.SelectOnly(place, position);
}

bool TreeCells::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ChildAdded) {
        QObject* const child = static_cast<QChildEvent*>(event)->child();
        if (child->isWidgetType())
            child->installEventFilter(this);
        return false;
    }
    auto* const control = dynamic_cast<QWidget*>(watched);
    const bool isFocus = event->type() == QEvent::FocusIn;
    if (!control ||
        (!isFocus && event->type() != QEvent::KeyPress && event->type() != QEvent::MouseButtonPress))
        return false;
    const auto [row, position] = CellOf(control);
    if (!row || position < 0 || ui::NodeAccess::NodeOf(control->parentWidget()) == &state.owner)
        return false;
    const QPointer<QWidget> alive(control);
    bool taken = false;
    ui::CallFromToolkit([&, shownRow = row, cell = position] {
        if (isFocus) {
            SelectFocusedRow(shownRow, cell);
        } else if (event->type() == QEvent::KeyPress) {
            const bool typing = control->testAttribute(Qt::WA_InputMethodEnabled);
            taken = !typing && state.keyboard.PressInControl(*static_cast<QKeyEvent*>(event));
        } else if (static_cast<QMouseEvent*>(event)->modifiers() == Qt::NoModifier) {
            state.SelectOnly(state.model.PlaceOf(shownRow.get()), cell);
        }
    });
    return taken || !alive;
}

} // namespace zetui::controls
