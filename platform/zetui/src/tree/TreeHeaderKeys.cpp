// The titles of a tree with the keyboard.
#include <algorithm>

#include <QAccessible>
#include <QKeyEvent>
#include <QPainter>

#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"
#include "skins/SkinRecord.h"
#include "tree/AccessibleTree.h"
#include "tree/TreeHeader.h"
#include "tree/TreeView.h"

namespace zetui::controls {

namespace {

constexpr int resizeStep = 10;

} // namespace

TreeView& TreeHeader::View() const
{
    return static_cast<TreeView&>(*parentWidget());
}

bool TreeHeader::CanHaveFocus() const
{
    return !isHidden() && count() > 0 && isEnabled();
}

int TreeHeader::FramedColumn() const
{
    return framed >= 0 && framed < count() ? framed : logicalIndex(0);
}

void TreeHeader::keyPressEvent(QKeyEvent* event)
{
    event->setAccepted(FramedColumn() >= 0 && Press(*event));
}

bool TreeHeader::Press(const QKeyEvent& event)
{
    const int column = FramedColumn();
    const int place = visualIndex(column);
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    const int forward = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    switch (event.key()) {
    case Qt::Key_Left:
    case Qt::Key_Right: {
        const int step = event.key() == forward ? 1 : -1;
        if (modifiers == Qt::ShiftModifier)
            Resize(column, step * resizeStep);
        else if (modifiers == Qt::ControlModifier)
            Move(column, step);
        else if (modifiers == Qt::NoModifier)
            Frame(logicalIndex(std::clamp(place + step, 0, count() - 1)));
        else
            return false;
        return true;
    }
    case Qt::Key_Home:
    case Qt::Key_End:
        Frame(logicalIndex(event.key() == Qt::Key_Home ? 0 : count() - 1));
        return true;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (modifiers != Qt::NoModifier)
            return false;
        // A key that is kept down sorts once.
        if (!event.isAutoRepeat())
            Sort(column);
        return true;
    case Qt::Key_Plus:
        if (!modifiers.testFlag(Qt::ControlModifier))
            return false;
        Fit(column);
        return true;
    case Qt::Key_Down:
        return modifiers == Qt::NoModifier && View().EnterRows();
    default:
        return false;
    }
}

void TreeHeader::Frame(int column)
{
    framed = column;
    View().ShowColumn(column);
    viewport()->update();
    TellOfFrame();
}

void TreeHeader::Sort(int column)
{
    const bool again = sortIndicatorSection() == column;
    setSortIndicator(column, again && sortIndicatorOrder() == Qt::AscendingOrder ? Qt::DescendingOrder
                                                                                 : Qt::AscendingOrder);
}

void TreeHeader::Resize(int column, int step)
{
    View().Last().ChooseWidth(column, std::max(minimumSectionSize(), View().Last().Width(column) + step));
    View().ShowColumn(column);
}

void TreeHeader::Fit(int column)
{
    const int shown = std::max(View().NeededWidth(column), sectionSizeHint(column));
    View().Last().FitWidth(column, shown - TreeView::OtherPadding(), TreeView::OtherPadding());
    View().Last().Choose(column);
    View().ShowColumn(column);
}

void TreeHeader::Move(int column, int step)
{
    const int from = visualIndex(column), to = from + step;
    if (to < 0 || to >= count() || keepsPlace(column) || keepsPlace(logicalIndex(to)))
        return;
    moveSection(from, to);
    Frame(column);
}

/// Screen readers follow the frame as they follow the focus.
void TreeHeader::TellOfFrame() const
{
    if (!hasFocus() || !QAccessible::isActive())
        return;
    const AccessibleTree* const table = AccessibleTree::Of(&View());
    if (QAccessibleInterface* const title = table ? table->TitleOf(FramedColumn()) : nullptr) {
        QAccessibleEvent focus(title, QAccessible::Focus);
        QAccessible::updateAccessibility(&focus);
    }
}

void TreeHeader::focusInEvent(QFocusEvent* event)
{
    QHeaderView::focusInEvent(event);
    Frame(FramedColumn());
    // Qt tells of the row of titles itself when this is done, and what it tells last counts.
    QMetaObject::invokeMethod(this, &TreeHeader::TellOfFrame, Qt::QueuedConnection);
}

void TreeHeader::focusOutEvent(QFocusEvent* event)
{
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

/// The titles come before the rows.
bool TreeHeader::focusNextPrevChild(bool next)
{
    return next ? View().FocusRows() : View().Leave(false);
}

void TreeHeader::paintSection(QPainter* painter, const QRect& rect, int column) const
{
    QHeaderView::paintSection(painter, rect, column);
    if (!hasFocus() || column != FramedColumn())
        return;
    pixmill::PaintFrame(*painter, rect, pixmill::ToQt(skins::CurrentColors().focus), 2);
}

} // namespace zetui::controls
