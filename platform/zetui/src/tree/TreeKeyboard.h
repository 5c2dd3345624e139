#pragma once

#include <QElapsedTimer>
#include <QString>

#include <zetui/tree/UI_MultiColumnTree.h>

class QKeyEvent;

namespace zetui::controls {

/// Handles the keys of a tree, whether the list or a control in one of its cells has the focus.
class TreeKeyboard
{
  public:
    using TreeState = UI_MultiColumnTree::TreeState;

    explicit TreeKeyboard(TreeState& state);

    /// True when the list has handled the key.
    bool Press(const QKeyEvent& event);
    /// True for a key that the list takes from a control in its cells, because it moves the selection.
    bool PressInControl(const QKeyEvent& event);
    /// Moves the focus among the controls of the selected row. Behind the last one it leaves the list, and
    /// before the first one the list itself gets it. False when the focus must leave the list, and this has
    /// not done it.
    bool MoveThroughControls(bool forward);
    /// Selects the framed row and brings it into sight. False when there is none.
    bool Enter();
    /// Opens the menu of the framed row.
    bool OpenMenu();
    /// The place of the row that has the focus frame while the list has the focus: the selected one,
    /// otherwise the one where the keyboard would begin. -1 without rows in sight.
    int FramedPlace() const;
    /// The place from which Shift extends the selection.
    void SetAnchor(int place) noexcept { anchor = place; }
    int Anchor() const noexcept { return anchor; }

  private:
    bool Navigate(const QKeyEvent& event);
    int Destination(int key, int current) const;
    void MoveTo(int place, bool extend);
    bool MoveCell(int step);
    bool PressFirstControl();
    bool ToggleRow(bool control);
    bool Delete() const;
    static bool OpensMenu(const QKeyEvent& event);
    bool JumpToText(const QString& text);
    int CurrentPlace() const;

    TreeState& state;
    QString typed;
    QElapsedTimer sinceTyped;
    int anchor = -1;
};

} // namespace zetui::controls
