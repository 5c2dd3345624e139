#include "tree/AccessibleCell.h"

#include <QAbstractButton>
#include <QHeaderView>

#include "application/HandlerErrors.h"
#include "controls/AccessibleButton.h"
#include "nodes/NodeAccess.h"
#include "pixmill/LocalizedText.h"
#include "pixmill/QtConversions.h"
#include "tree/TreeState.h"

namespace zetui::controls {

AccessibleCell::AccessibleCell(AccessibleTree& table, int cellPlace, int cellPosition)
    : list(table), place(cellPlace), position(cellPosition)
{}

AccessibleCell::~AccessibleCell() = default;

bool AccessibleCell::isValid() const
{
    return place < list.rowCount() && position < list.columnCount();
}

UI_MultiColumnTree::TreeState& AccessibleCell::State() const
{
    return *list.State();
}

UI_MultiColumnTree::RowPtr AccessibleCell::Row() const
{
    return isValid() ? State().Hold(State().model.RowAt(place)) : nullptr;
}

CellControl AccessibleCell::Control() const
{
    const auto row = Row();
    return row ? State().ControlAt(row, position) : CellControl();
}

utility::IntrusivePtr<ui::UI_SubView> AccessibleCell::View() const
{
    return isValid() ? State().cells.ShownViewAt(State().model.RowAt(place), position) : nullptr;
}

QWindow* AccessibleCell::window() const
{
    return list.window();
}

void* AccessibleCell::interface_cast(QAccessible::InterfaceType type)
{
    if (type == QAccessible::TableCellInterface)
        return static_cast<QAccessibleTableCellInterface*>(this);
    if (type == QAccessible::ActionInterface)
        return static_cast<QAccessibleActionInterface*>(this);
    return nullptr;
}

QAccessibleInterface* AccessibleCell::parent() const
{
    return &list;
}

int AccessibleCell::childCount() const
{
    const auto view = View();
    return view ? static_cast<int>(view->ChildCount()) : 0;
}

QAccessibleInterface* AccessibleCell::child(int index) const
{
    if (index < 0 || index >= childCount())
        return nullptr;
    QWidget* const widget = ui::WidgetOf(View()->GetChild(static_cast<std::size_t>(index)).get());
    return widget ? QAccessible::queryAccessibleInterface(widget) : nullptr;
}

QAccessibleInterface* AccessibleCell::childAt(int x, int y) const
{
    for (int index = 0; index < childCount(); ++index) {
        QAccessibleInterface* const control = child(index);
        if (control && control->rect().contains(x, y))
            return control;
    }
    return nullptr;
}

int AccessibleCell::indexOfChild(const QAccessibleInterface* wanted) const
{
    for (int index = 0; wanted && index < childCount(); ++index) {
        if (child(index) == wanted)
            return index;
    }
    return -1;
}

QString AccessibleCell::Data(int role) const
{
    return State().model.index(place, State().ColumnAtPosition(position)).data(role).toString();
}

QString AccessibleCell::Name() const
{
    const QString value = Data(Qt::AccessibleTextRole);
    const QString title = list.columnDescription(position);
    if (title.isEmpty())
        return value;
    if (value.isEmpty())
        return title;
    const std::wstring named = pixmill::ToWide(title);
    const std::wstring said = pixmill::ToWide(value);
    // A box says nothing without the name of what it switches.
    if (Control().kind == CellControl::Kind::Checkbox)
        return pixmill::LocalizedText("$$$/zetui/Tree/CheckboxCell=@0: @1, @2",
                                      {named, said, pixmill::ToWide(list.rowDescription(place))});
    return pixmill::LocalizedText("$$$/zetui/Tree/Cell=@0: @1", {named, said});
}

QString AccessibleCell::text(QAccessible::Text kind) const
{
    if (!isValid())
        return {};
    if (kind == QAccessible::Name)
        return Name();
    if (kind == QAccessible::Value)
        return Data(Qt::AccessibleTextRole);
    if (kind != QAccessible::Description)
        return {};
    // The tooltip of a text that is cut says the text again.
    const QString description = Data(Qt::AccessibleDescriptionRole);
    return description == Data(Qt::AccessibleTextRole) ? QString() : description;
}

QRect AccessibleCell::rect() const
{
    if (!isValid())
        return {};
    const TreeView& view = list.View();
    const int column = State().ColumnAtPosition(position);
    const QPoint corner(view.columnViewportPosition(column), view.rowViewportPosition(place));
    return {view.viewport()->mapToGlobal(corner), QSize(view.columnWidth(column), view.RowHeight())};
}

QAccessible::State AccessibleCell::state() const
{
    QAccessible::State state;
    if (!isValid()) {
        state.invalid = true;
        return state;
    }
    const TreeView& view = list.View();
    const QRect sight(view.viewport()->mapToGlobal(QPoint()), view.viewport()->size());
    state.disabled = !view.isEnabled();
    state.invisible = !view.isVisible();
    state.offscreen = !sight.intersects(rect());
    state.selectable = State().model.IsSelectable(place);
    state.selected = isSelected();
    state.focusable = view.focusPolicy() != Qt::NoFocus;
    state.focused = view.hasFocus() && place == list.FocusedPlace() && position == list.FocusedPosition();
    const CellControl control = Control();
    state.checkable = control.kind == CellControl::Kind::Checkbox;
    state.checked = state.checkable && control.checked;
    return state;
}

bool AccessibleCell::isSelected() const
{
    return isValid() && State().IsSelected(place);
}

QList<QAccessibleInterface*> AccessibleCell::columnHeaderCells() const
{
    QAccessibleInterface* const title = isValid() && !list.View().horizontalHeader()->isHidden()
                                            ? list.TitleOf(State().ColumnAtPosition(position))
                                            : nullptr;
    return title ? QList<QAccessibleInterface*>{title} : QList<QAccessibleInterface*>();
}

QList<QAccessibleInterface*> AccessibleCell::rowHeaderCells() const
{
    if (!isValid() || position == State().NamePosition())
        return {};
    return {list.cellAt(place, State().NamePosition())};
}

QStringList AccessibleCell::actionNames() const
{
    QStringList names;
    const CellControl control = Control();
    if (control.enabled && control.kind == CellControl::Kind::Checkbox)
        names.append(toggleAction());
    if (control.enabled && control.kind == CellControl::Kind::Button)
        names.append(pressAction());
    if (isValid() && list.View().focusPolicy() != Qt::NoFocus && State().model.IsSelectable(place))
        names.append(setFocusAction());
    return names;
}

void AccessibleCell::doAction(const QString& name)
{
    if (!actionNames().contains(name))
        return;
    if (name != setFocusAction()) {
        ClickControl();
        return;
    }
    list.View().ShowPlace(place);
    list.View().setFocus(Qt::OtherFocusReason);
    ui::CallFromToolkit([this] { State().SelectOnly(place, position); });
}

/// A control exists only while its row is in sight, so the row is brought there first. What the click does
/// may end this cell.
void AccessibleCell::ClickControl() const
{
    State().Flush();
    list.View().ShowPlace(place);
    const auto row = Row();
    if (auto* const button = dynamic_cast<QAbstractButton*>(State().cells.WidgetAt(row.get(), position)))
        AccessibleButton::Click(*button);
}

} // namespace zetui::controls
