#include <QAbstractTableModel>
#include <QHeaderView>
#include <QSortFilterProxyModel>
#include <QStringList>
#include <QTableView>
#include <QTreeWidget>

#include "MeasuredList.h"

namespace bench {

namespace {

QStringList TitleTexts()
{
    QStringList titles;
    for (const wchar_t* const title : listTitles)
        titles.push_back(QString::fromWCharArray(title));
    return titles;
}

class TreeWidgetList final : public MeasuredList
{
  public:
    TreeWidgetList()
    {
        widget.resize(706, 240);
        widget.setColumnCount(listColumns);
        widget.setHeaderLabels(TitleTexts());
        widget.setRootIsDecorated(false);
        widget.setUniformRowHeights(true);
        widget.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        widget.setSortingEnabled(true);
        widget.show();
    }

    std::string Name() const override { return "QTreeWidget"; }
    QAbstractItemView& View() override { return widget; }
    void Fill(const std::vector<ListEntry>& entries) override
    {
        widget.clear();
        QList<QTreeWidgetItem*> items;
        for (const ListEntry& entry : entries) {
            auto item = std::make_unique<QTreeWidgetItem>();
            for (int column = 0; column < listColumns; ++column)
                item->setText(column, QString::fromStdWString(entry.texts[static_cast<std::size_t>(column)]));
            item->setCheckState(0, entry.enabled ? Qt::Checked : Qt::Unchecked);
            item->setData(0, Qt::UserRole, QVariant::fromValue(reinterpret_cast<quintptr>(&entry)));
            items.push_back(item.release());
        }
        widget.addTopLevelItems(items);
    }
    void Filter(const std::vector<ListEntry>&, const std::wstring& lowerCaseText) override
    {
        widget.setUpdatesEnabled(false);
        for (int i = 0; i < widget.topLevelItemCount(); ++i) {
            QTreeWidgetItem* const item = widget.topLevelItem(i);
            const auto* const entry =
                reinterpret_cast<const ListEntry*>(item->data(0, Qt::UserRole).value<quintptr>());
            item->setHidden(!Holds(*entry, lowerCaseText));
        }
        widget.setUpdatesEnabled(true);
    }
    void Sort(int column, bool ascending) override
    {
        widget.sortByColumn(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    int ShownRows() const override
    {
        int shown = 0;
        for (int i = 0; i < widget.topLevelItemCount(); ++i)
            shown += widget.topLevelItem(i)->isHidden() ? 0 : 1;
        return shown;
    }

  private:
    QTreeWidget widget;
};

/// The texts as Qt's strings, which a model needs that Qt's classes sort.
class TextTable final : public QAbstractTableModel
{
  public:
    void Fill(const std::vector<ListEntry>& newEntries)
    {
        beginResetModel();
        rows.clear();
        rows.reserve(newEntries.size());
        for (const ListEntry& entry : newEntries) {
            Row row{{}, &entry};
            for (std::size_t column = 0; column < listColumns; ++column)
                row.texts[column] = QString::fromStdWString(entry.texts[column]);
            rows.push_back(std::move(row));
        }
        endResetModel();
    }
    const ListEntry& EntryAt(int row) const { return *rows[static_cast<std::size_t>(row)].entry; }

    int rowCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : static_cast<int>(rows.size());
    }
    int columnCount(const QModelIndex& parent = {}) const override
    {
        return parent.isValid() ? 0 : listColumns;
    }
    QVariant data(const QModelIndex& index, int role) const override
    {
        const Row& row = rows[static_cast<std::size_t>(index.row())];
        if (role == Qt::DisplayRole)
            return row.texts[static_cast<std::size_t>(index.column())];
        if (role == Qt::CheckStateRole && index.column() == 0)
            return row.entry->enabled ? Qt::Checked : Qt::Unchecked;
        return {};
    }
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation == Qt::Horizontal && role == Qt::DisplayRole)
            return TitleTexts().at(section);
        return {};
    }

  private:
    struct Row
    {
        std::array<QString, listColumns> texts;
        const ListEntry* entry;
    };
    std::vector<Row> rows;
};

class FindProxy final : public QSortFilterProxyModel
{
  public:
    void Find(const std::wstring& lowerCaseText)
    {
        text = lowerCaseText;
        // The proxy's own text is not read here. To set it filters anew, in every version of Qt.
        setFilterFixedString(QString::fromStdWString(text));
    }

  protected:
    bool filterAcceptsRow(int row, const QModelIndex&) const override
    {
        return text.empty() || Holds(static_cast<const TextTable*>(sourceModel())->EntryAt(row), text);
    }

  private:
    std::wstring text;
};

class ProxyTableList final : public MeasuredList
{
  public:
    ProxyTableList()
    {
        proxy.setSourceModel(&table);
        proxy.setSortCaseSensitivity(Qt::CaseInsensitive);
        proxy.setSortLocaleAware(true);
        view.resize(706, 240);
        view.setModel(&proxy);
        view.verticalHeader()->hide();
        view.verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
        view.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
        view.setSelectionBehavior(QAbstractItemView::SelectRows);
        view.setSortingEnabled(true);
        view.show();
    }

    std::string Name() const override { return "QTableView+proxy"; }
    QAbstractItemView& View() override { return view; }
    void Fill(const std::vector<ListEntry>& entries) override { table.Fill(entries); }
    void Filter(const std::vector<ListEntry>&, const std::wstring& lowerCaseText) override
    {
        proxy.Find(lowerCaseText);
    }
    void Sort(int column, bool ascending) override
    {
        view.sortByColumn(column, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
    }
    int ShownRows() const override { return proxy.rowCount(); }

  private:
    TextTable table;
    FindProxy proxy;
    QTableView view;
};

} // namespace

std::unique_ptr<MeasuredList> MakeTreeWidget()
{
    return std::make_unique<TreeWidgetList>();
}

std::unique_ptr<MeasuredList> MakeProxyTable()
{
    return std::make_unique<ProxyTableList>();
}

} // namespace bench
