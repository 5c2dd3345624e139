#pragma once

#include <functional>
#include <string>
#include <vector>

#include <QAbstractTableModel>
#include <QString>
#include <QVariant>

#include <zetui/tree/UI_MultiColumnTreeRow.h>

namespace zetui::controls {

/// One column of a tree. Its index in the model is its place in the order of appending.
struct TreeColumn
{
    unsigned id;
    std::wstring title;
    /// The user cannot drag it to another place.
    bool keepsPlace = false;
};

/// The rows of a tree as they are shown, for the item view. The model has no texts, and does not hold the
/// rows.
class TreeModel final : public QAbstractTableModel
{
  public:
    /// As a column, this number asks for the name of the whole row.
    static constexpr int rowHeaderColumn = -1;
    /// Tells what a cell shows, by place from the top, column and role.
    using CellData = std::function<QVariant(int place, int column, int role)>;
    explicit TreeModel(CellData cellData);
    ~TreeModel() override;

    void SetColumns(std::vector<TreeColumn> columns);
    void AppendColumn(TreeColumn column);
    const std::vector<TreeColumn>& Columns() const noexcept { return columns; }
    void SetKeepsPlace(int column, bool keeps)
    {
        columns[static_cast<std::size_t>(column)].keepsPlace = keeps;
    }
    bool KeepsPlace(int column) const { return columns[static_cast<std::size_t>(column)].keepsPlace; }
    /// The index of the column; -1 when there is none.
    int ColumnOfId(unsigned id) const noexcept;

    /// Shows exactly these rows, from the top. The view loses its selection.
    void Show(std::vector<UI_MultiColumnTreeRow*> rows);
    const std::vector<UI_MultiColumnTreeRow*>& Shown() const noexcept { return shown; }
    UI_MultiColumnTreeRow* RowAt(int place) const noexcept;
    /// The row's place; -1 for a row that is not shown.
    int PlaceOf(const UI_MultiColumnTreeRow* row) const noexcept;
    void SetRowsSelectable(bool selectable) noexcept { rowsSelectable = selectable; }
    bool IsSelectable(int place) const noexcept;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

  private:
    CellData cellData;
    std::vector<TreeColumn> columns;
    std::vector<UI_MultiColumnTreeRow*> shown;
    /// The places of the rows, by their places in fill order.
    std::vector<int> places;
    bool rowsSelectable = true;
};

} // namespace zetui::controls
