#pragma once

#include <functional>
#include <map>
#include <set>
#include <utility>

class QTableView;

namespace zetui::controls {

/// The widths with which a view shows its columns. A column has a width of its own, which the program or the
/// user gave it. The last one, as the header shows them, may take what the others leave free. Where the
/// columns have no room together, one may give way, and very wide ones then become narrower, too.
class LastColumn
{
  public:
    explicit LastColumn(QTableView& view);

    void SetTakesFreeWidth(bool takes);
    /// This column gives way, down to that width.
    void SetGivesWay(int column, int least);
    /// True for a column that others do not make narrower.
    void SetKeepsWidth(std::function<bool(int column)> keeps) { keepsWidth = std::move(keeps); }
    /// To be called when the view's width, or the number or the order of its columns, has changed.
    void Update();
    /// To be called when a column has been resized by others than `Update`.
    void OnResized(int column, int from, int to);
    bool IsUpdating() const noexcept { return updating; }
    bool IsWidened(int column) const;

    /// The own widths of all columns.
    void SetWidth(int column, int width);
    int Width(int column) const;
    /// A width that was found by measuring texts, and that counts the padding beside them only once. The
    /// column is shown with the other one, too.
    void FitWidth(int column, int width, int otherPadding);
    /// The user chooses a width, with which the column is shown in any room.
    void ChooseWidth(int column, int width);
    /// From now on the column is shown with its width in any room.
    void Choose(int column);

  private:
    void Resize(int column, int width);

    QTableView& view;
    bool takesFreeWidth = false;
    bool updating = false;
    bool setting = false;
    std::function<bool(int column)> keepsWidth;
    int givesWay = -1;
    int leastWidth = 0;
    /// Of the columns that are shown with another width.
    std::map<int, int> ownWidths;
    /// The padding by which fitted columns are wider.
    std::map<int, int> paddings;
    /// The columns to which the user has given their widths.
    std::set<int> chosen;
};

} // namespace zetui::controls
