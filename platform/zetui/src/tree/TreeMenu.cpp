// The context menus of a tree's rows.
#include <QApplication>
#include <QContextMenuEvent>

#include "application/HandlerErrors.h"
#include "controls/PopupMenu.h"
#include "tree/TreeState.h"

namespace zetui::controls {

bool TreeKeyboard::OpensMenu(const QKeyEvent& event)
{
    return (event.key() == Qt::Key_Menu && event.modifiers() == Qt::NoModifier) ||
           (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
}

bool TreeKeyboard::OpenMenu()
{
    state.Flush();
    const int place = FramedPlace();
    if (!state.rowMenu || place < 0)
        return false;
    state.view->ShowPlace(place);
    state.view->OpenMenuAt(place, state.view->viewport()->mapToGlobal(state.view->MenuPoint(place)), true);
    return true;
}

/// The menu opens below the row's name, which stays readable.
QPoint TreeView::MenuPoint(int place) const
{
    constexpr int indent = 12;
    const int column = std::max(0, tree->ColumnAtPosition(tree->NamePosition()));
    const QRect seen = RowRect(place) & viewport()->rect();
    return {std::clamp(columnViewportPosition(column) + indent, 0, viewport()->width() - 1),
            seen.bottom() + 1};
}

void TreeView::OpenMenuAt(int place, const QPoint& onScreen, bool byKeyboard)
{
    if (!tree || !tree->rowMenu)
        return;
    if (!tree->IsSelected(place))
        tree->SelectOnly(place, -1);
    // The selection's callbacks may have changed the rows.
    const UI_MultiColumnTree::RowPtr row = tree->Hold(tree->model.RowAt(place));
    if (row)
        ShowPopupMenu(*this, tree->rowMenu(row), onScreen, byKeyboard);
}

void TreeView::contextMenuEvent(QContextMenuEvent* event)
{
    event->accept();
    if (!tree || !tree->rowMenu || QApplication::activePopupWidget())
        return;
    ui::CallFromToolkit([&] {
        // The key has opened the menu already where the system tells of the key, too.
        if (event->reason() == QContextMenuEvent::Keyboard) {
            tree->keyboard.OpenMenu();
            return;
        }
        tree->Flush();
        if (const int place = rowAt(viewport()->mapFromGlobal(event->globalPos()).y()); place >= 0)
            OpenMenuAt(place, event->globalPos(), false);
    });
}

} // namespace zetui::controls
