#pragma once

class QTableView;

namespace zetui::controls {

/// The last column of a view, as its header shows them, where it takes the width that the others leave free.
/// Its own width, which it keeps at least, is the one that program or user gave it.
class LastColumn
{
  public:
    explicit LastColumn(QTableView& view);

    void SetTakesFreeWidth(bool takes);
    /// To be called when the view's width, or number or order of its columns have changed.
    void Update();
    /// To be called when a column has been resized by others than `Update`.
    void OnResized(int column, int from, int to);
    bool IsUpdating() const noexcept { return updating; }
    bool IsWidened(int column) const noexcept { return column == widened; }

    /// Own widths, of any column.
    void SetWidth(int column, int width);
    int Width(int column) const;

  private:
    void Resize(int column, int width);

    QTableView& view;
    bool takesFreeWidth = false;
    bool updating = false;
    /// The column that is wider than its own width now, by its index; -1 for none.
    int widened = -1;
    int ownWidth = 0;
};

} // namespace zetui::controls
