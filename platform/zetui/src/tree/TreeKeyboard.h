#pragma once

#include <QElapsedTimer>
#include <QString>

#include <zetui/tree/UI_MultiColumnTree.h>

class QKeyEvent;

namespace zetui::controls {

/// Keys in a tree do this, whether the list or a control in one of its cells has the focus.
class TreeKeyboard
{
  public:
    using TreeState = UI_MultiColumnTree::TreeState;

    explicit TreeKeyboard(TreeState& state);

    /// True when the key was the list's.
    bool Press(const QKeyEvent& event);
    /// The keys that the list takes from a control in its cells: those that move the selection.
    bool PressInControl(const QKeyEvent& event);
    /// Moves the focus among the controls of the selected row. Past the last one it leaves the list, before
    /// the first one it is the list's own. False when there was nothing to do: the list itself is left.
    bool MoveThroughControls(bool forward);
    /// Shift extends the selection from this place.
    void SetAnchor(int place) noexcept { anchor = place; }
    int Anchor() const noexcept { return anchor; }

  private:
    bool Navigate(const QKeyEvent& event);
    int Destination(int key, int current) const;
    void MoveTo(int place, bool extend);
    bool MoveCell(int step);
    bool ToggleFirstCell();
    bool ToggleRow(bool control);
    bool JumpToText(const QString& text);
    int CurrentPlace() const;

    TreeState& state;
    QString typed;
    QElapsedTimer sinceTyped;
    int anchor = -1;
};

} // namespace zetui::controls
