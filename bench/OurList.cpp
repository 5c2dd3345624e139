#include <cmath>
#include <map>

#include <QWidget>

#include <zetui/controls/UI_Checkbox.h>
#include <zetui/skins/Skins.h>
#include <zetui/tree/UI_MultiColumnTree.h>

#include "MeasuredList.h"

namespace bench {

namespace {

using namespace zetui;
using controls::UI_MultiColumnTree;

constexpr float titleWidths[listColumns] = {60, 140, 80, 80, 70, 240};

/// A row with its entry, like those of the manager's list.
class EntryRow final : public controls::UI_MultiColumnTreeRow
{
  public:
    explicit EntryRow(const ListEntry& shown) : UI_MultiColumnTreeRow(true), entry(shown) {}
    const ListEntry& Entry() const { return entry; }

  protected:
    ~EntryRow() override = default;

  private:
    const ListEntry& entry;
};

class OurList final : public MeasuredList
{
  public:
    OurList()
        : tree(utility::MakeIntrusive<UI_MultiColumnTree>(1U, UI_MultiColumnTree::GetDefaultRowHeight())),
          header(nullptr)
    {
        View().setParent(&window);
        window.resize(706, 240);
        View().setGeometry(0, 0, 706, 240);
        tree->SetNumberOfColumns(0);
        header = utility::MakeIntrusive<controls::UI_MultiColumnTreeHeaderRow>(tree.get());
        for (unsigned column = 0; column < listColumns; ++column) {
            header->AppendColumn(listTitles[column], column + 1);
            header->SetColumnWidth(column + 1, titleWidths[column]);
        }
        tree->SetCellSortDataFunction(
            [this](RowPtr row, int position) { return TextAt(EntryOf(row), position); });
        tree->SetRowVisibilityChangedCallback([this](RowPtr row) { RowChanged(row); });
        tree->SetDrawCellOfRowCallback(
            [this](pixmill::Pixmill* context, RowPtr row, int position, UI_MultiColumnTree::RectF rect) {
                DrawCell(*context, row, position, rect);
            });
        window.show();
    }
    ~OurList() override
    {
        tree->RemoveAllRows();
        // The window would destroy the widget.
        View().setParent(nullptr);
    }

    std::string Name() const override { return "ours"; }
    QAbstractItemView& View() override
    {
        return *static_cast<QAbstractItemView*>(static_cast<QWidget*>(tree->NativeWidget()));
    }
    void Fill(const std::vector<ListEntry>& entries) override
    {
        rows.clear();
        for (const ListEntry& entry : entries)
            rows.push_back(utility::MakeIntrusive<EntryRow>(entry));
        Filter(entries, L"");
    }
    void Filter(const std::vector<ListEntry>&, const std::wstring& lowerCaseText) override
    {
        const controls::ScDeferLayoutForOpenAndCloseRow guard(tree.get());
        tree->RemoveAllRows();
        checkboxOfRow.clear();
        for (const auto& row : rows) {
            if (Holds(row->Entry(), lowerCaseText))
                tree->AppendRow(row, nullptr, true);
        }
    }
    void Sort(int column, bool ascending) override
    {
        header->SetSortColumn(static_cast<unsigned>(column) + 1);
        header->SetSortDirection(ascending);
        tree->SortTree();
    }
    int ShownRows() const override { return tree->GetRowCount(); }

  private:
    using RowPtr = UI_MultiColumnTree::RowPtr;
    struct ByAddress
    {
        bool operator()(const RowPtr& left, const RowPtr& right) const { return left.get() < right.get(); }
    };

    static const ListEntry& EntryOf(const RowPtr& row)
    {
        return static_cast<const EntryRow*>(row.get())->Entry();
    }

    const std::wstring& TextAt(const ListEntry& entry, int position) const
    {
        return entry.texts[header->GetColumnAt(position) - 1];
    }

    void RowChanged(const RowPtr& row)
    {
        if (!tree->IsRowVisible(row.get())) {
            checkboxOfRow.erase(row);
            return;
        }
        const auto checkbox = utility::MakeIntrusive<controls::UI_Checkbox>();
        checkbox->UI_SetLocalRectF({4, std::ceil((tree->GetRowHeight() - 14) / 2), 200, 14});
        row->GetCellView(0)->InsertChild(checkbox);
        checkbox->UI_Show(true);
        checkbox->SetWantsKeyboardFocus(true);
        checkbox->SetChecked(EntryOf(row).enabled);
        checkboxOfRow[row] = checkbox;
    }

    void DrawCell(pixmill::Pixmill& context, const RowPtr& row, int position,
                  UI_MultiColumnTree::RectF rect) const
    {
        if (position == 0)
            return;
        const pixmill::Pixmill::Clip clip(context, rect);
        const pixmill::Font font{ui::GetFontName(0), ui::GetFontSize(0)};
        const float padding = UI_MultiColumnTree::GetDefaultCellPadding().second;
        const std::wstring text = pixmill::TruncateString(
            font, TextAt(EntryOf(row), position), pixmill::TextTruncation::End, rect.width - 2 * padding);
        context.DrawString(text, font, skins::utilities::GetDefaultTextColor(), rect.left + padding,
                           rect.top + pixmill::GetFontBaseline(font, rect.height));
    }

    QWidget window;
    utility::IntrusivePtr<UI_MultiColumnTree> tree;
    utility::IntrusivePtr<controls::UI_MultiColumnTreeHeaderRow> header;
    std::vector<utility::IntrusivePtr<EntryRow>> rows;
    std::map<RowPtr, utility::IntrusivePtr<controls::UI_Checkbox>, ByAddress> checkboxOfRow;
};

} // namespace

std::unique_ptr<MeasuredList> MakeOurList()
{
    return std::make_unique<OurList>();
}

} // namespace bench
