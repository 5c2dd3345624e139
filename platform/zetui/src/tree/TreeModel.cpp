#include "tree/TreeModel.h"

#include <algorithm>

#include "pixmill/QtConversions.h"
#include "tree/TreeAccess.h"

namespace zetui::controls {

TreeModel::TreeModel(CellData function) : cellData(std::move(function)) {}

TreeModel::~TreeModel() = default;

void TreeModel::SetColumns(std::vector<TreeColumn> newColumns)
{
    beginResetModel();
    columns = std::move(newColumns);
    endResetModel();
}

void TreeModel::AppendColumn(TreeColumn column)
{
    const int index = static_cast<int>(columns.size());
    beginInsertColumns({}, index, index);
    columns.push_back(std::move(column));
    endInsertColumns();
}

int TreeModel::ColumnOfId(unsigned id) const noexcept
{
    const auto found =
        std::find_if(columns.begin(), columns.end(), [id](const auto& column) { return column.id == id; });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

void TreeModel::Show(std::vector<UI_MultiColumnTreeRow*> rows)
{
    beginResetModel();
    shown = std::move(rows);
    places.assign(shown.size(), -1);
    for (std::size_t place = 0; place < shown.size(); ++place)
        places[static_cast<std::size_t>(TreeAccess::FillIndexOf(*shown[place]))] = static_cast<int>(place);
    endResetModel();
}

UI_MultiColumnTreeRow* TreeModel::RowAt(int place) const noexcept
{
    return place < 0 || place >= static_cast<int>(shown.size()) ? nullptr
                                                                : shown[static_cast<std::size_t>(place)];
}

int TreeModel::PlaceOf(const UI_MultiColumnTreeRow* row) const noexcept
{
    const int index = row ? TreeAccess::FillIndexOf(*row) : -1;
    if (index < 0 || index >= static_cast<int>(places.size()))
        return -1;
    const int place = places[static_cast<std::size_t>(index)];
    return RowAt(place) == row ? place : -1;
}

bool TreeModel::IsSelectable(int place) const noexcept
{
    const UI_MultiColumnTreeRow* const row = RowAt(place);
    return row && rowsSelectable && row->IsSelectable();
}

int TreeModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(shown.size());
}

int TreeModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(columns.size());
}

QVariant TreeModel::data(const QModelIndex& index, int role) const
{
    return index.isValid() ? cellData(index.row(), index.column(), role) : QVariant();
}

QVariant TreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Vertical)
        return cellData(section, rowHeaderColumn, role);
    if (section < 0 || section >= static_cast<int>(columns.size()))
        return {};
    if (role == Qt::DisplayRole)
        return pixmill::ToQString(columns[static_cast<std::size_t>(section)].title);
    if (role == Qt::TextAlignmentRole)
        return QVariant(Qt::AlignLeft | Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags TreeModel::flags(const QModelIndex& index) const
{
    Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemNeverHasChildren;
    if (IsSelectable(index.row()))
        flags |= Qt::ItemIsSelectable;
    return flags;
}

} // namespace zetui::controls
