#include "tree/TreeKeyboard.h"

#include <algorithm>

#include <QAbstractButton>
#include <QApplication>
#include <QKeyEvent>
#include <QScrollBar>

#include "pixmill/QtConversions.h"
#include "tree/TreeState.h"

namespace zetui::controls {

namespace {

constexpr Qt::KeyboardModifiers commandKeys = Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier;

bool MovesDown(int key)
{
    return key == Qt::Key_Down || key == Qt::Key_PageDown || key == Qt::Key_Home;
}

void Scroll(QScrollBar& bar, int key)
{
    switch (key) {
    case Qt::Key_Up:
    case Qt::Key_Left:
        bar.triggerAction(QAbstractSlider::SliderSingleStepSub);
        break;
    case Qt::Key_Down:
    case Qt::Key_Right:
        bar.triggerAction(QAbstractSlider::SliderSingleStepAdd);
        break;
    case Qt::Key_PageUp:
        bar.triggerAction(QAbstractSlider::SliderPageStepSub);
        break;
    case Qt::Key_PageDown:
        bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
        break;
    case Qt::Key_Home:
        bar.triggerAction(QAbstractSlider::SliderToMinimum);
        break;
    default:
        bar.triggerAction(QAbstractSlider::SliderToMaximum);
    }
}

} // namespace

TreeKeyboard::TreeKeyboard(TreeState& treeState) : state(treeState) {}

bool TreeKeyboard::Press(const QKeyEvent& event)
{
    if (!state.view)
        return false;
    state.Flush();
    if (Navigate(event))
        return true;
    if (event.matches(QKeySequence::SelectAll) && state.options.multipleSelections &&
        state.model.rowCount() > 0) {
        state.SelectRange(0, state.model.rowCount() - 1);
        return true;
    }
    const bool control = event.modifiers().testFlag(Qt::ControlModifier);
    if (event.key() == Qt::Key_Space)
        return (!control && PressFirstControl()) || ToggleRow(control);
    if (OpensMenu(event))
        return OpenMenu();
    if (event.key() == Qt::Key_Delete && event.modifiers() == Qt::NoModifier)
        return Delete();
    const QString text = event.text();
    const bool types = !text.isEmpty() && text.front().isPrint() && !(event.modifiers() & commandKeys);
    return types && JumpToText(text);
}

bool TreeKeyboard::PressInControl(const QKeyEvent& event)
{
    state.Flush();
    return Navigate(event) || (OpensMenu(event) && OpenMenu());
}

int TreeKeyboard::CurrentPlace() const
{
    const int current = state.view->currentIndex().row();
    return state.IsSelected(current) ? current : state.FirstSelectedPlace();
}

bool TreeKeyboard::Navigate(const QKeyEvent& event)
{
    if (event.modifiers() & (Qt::AltModifier | Qt::MetaModifier))
        return false;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (state.options.selectableCells && state.options.selectableRows)
            return MoveCell(event.key() == Qt::Key_Right ? 1 : -1);
        Scroll(*state.view->horizontalScrollBar(), event.key());
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End:
        break;
    default:
        return false;
    }
    if (!state.options.selectableRows)
        Scroll(*state.view->verticalScrollBar(), event.key());
    else if (const int place = Destination(event.key(), CurrentPlace()); place >= 0)
        MoveTo(place, event.modifiers().testFlag(Qt::ShiftModifier));
    return true;
}

/// -1 when no row can be selected.
int TreeKeyboard::Destination(int key, int current) const
{
    const int last = state.model.rowCount() - 1;
    const int page = std::max(1, state.view->viewport()->height() / state.view->RowHeight() - 1);
    int place = MovesDown(key) ? 0 : last;
    if (current >= 0) {
        switch (key) {
        case Qt::Key_Up:
            place = current - 1;
            break;
        case Qt::Key_Down:
            place = current + 1;
            break;
        case Qt::Key_PageUp:
            place = current - page;
            break;
        case Qt::Key_PageDown:
            place = current + page;
            break;
        default:
            break;
        }
    }
    place = std::clamp(place, 0, std::max(0, last));
    const int step = MovesDown(key) ? 1 : -1;
    for (int near = place; near >= 0 && near <= last; near += step) {
        if (state.model.IsSelectable(near))
            return near;
    }
    for (int near = place; near >= 0 && near <= last; near -= step) {
        if (state.model.IsSelectable(near))
            return near;
    }
    return -1;
}

void TreeKeyboard::MoveTo(int place, bool extend)
{
    const TreeState::SelectionChange change(state);
    // The row is brought into sight before the selection changes, so that those who are told of it find the
    // row's cells.
    state.view->ShowPlace(place);
    if (extend && state.options.multipleSelections) {
        if (anchor < 0)
            anchor = std::max(0, CurrentPlace());
        state.SelectRange(std::min(anchor, state.model.rowCount() - 1), place);
        return;
    }
    anchor = place;
    state.SelectOnly(place, state.selectedCell);
}

bool TreeKeyboard::MoveCell(int step)
{
    const TreeState::SelectionChange change(state);
    const int current = CurrentPlace();
    const int place = current >= 0 ? current : Destination(Qt::Key_Down, -1);
    if (place < 0)
        return true;
    state.view->ShowPlace(place);
    const int cell = std::clamp(state.selectedCell + step, -1, state.model.columnCount() - 1);
    state.view->ShowColumn(state.ColumnAtPosition(std::max(0, cell)));
    state.SelectOnly(place, cell);
    return true;
}

int TreeKeyboard::FramedPlace() const
{
    if (const int current = CurrentPlace(); current >= 0)
        return current;
    const auto [first, last] = state.view->PlacesInSight();
    return last < first ? -1 : first;
}

bool TreeKeyboard::Enter()
{
    state.Flush();
    const int place = FramedPlace();
    if (place < 0)
        return false;
    if (state.IsSelected(place))
        state.view->ShowPlace(place);
    else
        MoveTo(place, false);
    return true;
}

bool TreeKeyboard::PressFirstControl()
{
    const int place = FramedPlace();
    if (place < 0)
        return false;
    state.view->ShowPlace(place);
    for (QWidget* const control : state.cells.ControlsOf(state.model.RowAt(place))) {
        if (auto* const button = dynamic_cast<QAbstractButton*>(control)) {
            button->click();
            return true;
        }
    }
    return false;
}

bool TreeKeyboard::Delete() const
{
    if (!state.deletePressed || state.FirstSelectedPlace() < 0)
        return false;
    // The callback may set another one.
    const std::function<void()> callback = state.deletePressed;
    callback();
    return true;
}

bool TreeKeyboard::ToggleRow(bool control)
{
    const int place = state.view->currentIndex().row();
    if (!state.options.nonArrowKeysSelect || !state.model.IsSelectable(place))
        return false;
    const bool selected = state.IsSelected(place);
    if (!selected)
        state.SelectAlso(place, true);
    else if (control && state.options.noneSelected)
        state.SelectAlso(place, false);
    return true;
}

bool TreeKeyboard::JumpToText(const QString& text)
{
    const int count = state.model.rowCount();
    if (!state.options.selectableRows || count == 0)
        return false;
    const bool goesOn = sinceTyped.isValid() && !sinceTyped.hasExpired(QApplication::keyboardInputInterval());
    typed = goesOn ? typed + text : text;
    sinceTyped.start();
    // The same letter, typed again and again, goes from row to row.
    const bool oneLetter = typed.count(typed.front(), Qt::CaseInsensitive) == typed.size();
    const QString sought = oneLetter ? typed.left(1) : typed;
    const int start = CurrentPlace() + (oneLetter ? 1 : 0);
    for (int i = 0; i < count; ++i) {
        const int place = (std::max(0, start) + i) % count;
        const auto row = state.Hold(state.model.RowAt(place));
        if (state.model.IsSelectable(place) && pixmill::ToQString(state.CellText(row, state.NamePosition()))
                                                   .startsWith(sought, Qt::CaseInsensitive)) {
            MoveTo(place, false);
            break;
        }
    }
    return true;
}

bool TreeKeyboard::MoveThroughControls(bool forward)
{
    if (!state.view)
        return false;
    state.Flush();
    const QWidget* const focus = QApplication::focusWidget();
    const auto focusRow = state.cells.CellOf(focus).first;
    const UI_MultiColumnTreeRow* row = focusRow.get();
    if (!row) {
        const int place = CurrentPlace();
        if (!forward || place < 0)
            return false;
        state.view->ShowPlace(place);
        row = state.model.RowAt(place);
    }
    const std::vector<QWidget*> controls = state.cells.ControlsOf(row);
    const auto at = std::find(controls.begin(), controls.end(), focus);
    auto next = at == controls.end() ? controls.begin() : at + 1;
    if (focusRow && !forward) {
        if (at == controls.begin() || at == controls.end()) {
            state.view->setFocus(Qt::BacktabFocusReason);
            return true;
        }
        next = at - 1;
    }
    if (next == controls.end())
        return focusRow ? state.view->Leave(true) : false;
    const QPointer<QWidget> control(*next);
    if (state.model.PlaceOf(row) == state.FirstSelectedPlace())
        state.SetSelectedCell(state.cells.CellOf(control).second);
    if (control)
        control->setFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
    return true;
}

} // namespace zetui::controls
