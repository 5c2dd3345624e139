#pragma once

class QTableView;

namespace zetui::controls {

/// Makes the last column of a view, as its header shows them, take the width that the others leave free. The
/// column is never narrower than its own width, which the program or the user gave it.
class LastColumn
{
  public:
    explicit LastColumn(QTableView& view);

    void SetTakesFreeWidth(bool takes);
    /// To be called when the view's width, or the number or the order of its columns, has changed.
    void Update();
    /// To be called when a column has been resized by others than `Update`.
    void OnResized(int column, int from, int to);
    bool IsUpdating() const noexcept { return updating; }
    bool IsWidened(int column) const noexcept { return column == widened; }

    /// The own widths of all columns.
    void SetWidth(int column, int width);
    int Width(int column) const;

  private:
    void Resize(int column, int width);

    QTableView& view;
    bool takesFreeWidth = false;
    bool updating = false;
    /// The index of the column that is wider than its own width now; -1 for none.
    int widened = -1;
    int ownWidth = 0;
};

} // namespace zetui::controls
