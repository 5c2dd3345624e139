#include <zetui/tree/UI_MultiColumnTree.h>

#include <algorithm>
#include <cmath>
#include <stdexcept>
#include <utility>

#include <QHeaderView>
#include <QScrollBar>

#include <zetcore/threads/MainThread.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/skins/ListSizes.h>

#include "application/HandlerErrors.h"
#include "nodes/NodeAccess.h"
#include "tree/TreeState.h"

namespace zetui::controls {

UI_MultiColumnTree::UI_MultiColumnTree(unsigned columns, float rowHeight)
    : UI_ControlView(ui::NodeAccess::NewWidget<TreeView>()),
      tree(
          std::make_unique<TreeState>(*this, static_cast<TreeView&>(*ui::WidgetOf(this)), columns, rowHeight))
{}

UI_MultiColumnTree::~UI_MultiColumnTree() = default;

void UI_MultiColumnTree::Init(TreeFlags) {}

float UI_MultiColumnTree::GetDefaultRowHeight()
{
    return skins::GetListSizes().rowHeight;
}

std::pair<float, float> UI_MultiColumnTree::GetDefaultCellPadding()
{
    return skins::GetListSizes().cellPadding;
}

float UI_MultiColumnTree::GetRowHeight() const
{
    return tree->rowHeight;
}

// Rows are a flat list, whether or not they might have children.
void UI_MultiColumnTree::SetAllowChildren(bool) {}

void UI_MultiColumnTree::SetIndicateFocus(bool indicate)
{
    tree->options.indicateFocus = indicate;
    UI_Redraw();
}

void UI_MultiColumnTree::SetSupportNoneSelected(bool support)
{
    tree->options.noneSelected = support;
}

void UI_MultiColumnTree::SetSupportDeselectAllOnEmptyTreeClick(bool support)
{
    tree->options.deselectOnEmptyClick = support;
}

void UI_MultiColumnTree::SetSupportMultipleSelections(bool support)
{
    tree->options.multipleSelections = support;
    tree->ApplySelectionOptions();
}

void UI_MultiColumnTree::SetWantsKeyboardFocus(bool wants)
{
    UI_ControlView::SetWantsKeyboardFocus(wants);
}

void UI_MultiColumnTree::SetSupportNonArrowKeysToSelectRow(bool support)
{
    tree->options.nonArrowKeysSelect = support;
}

void UI_MultiColumnTree::SetSupportUserSelectableRows(bool support)
{
    tree->options.selectableRows = support;
    tree->ApplySelectionOptions();
}

void UI_MultiColumnTree::SetSupportUserSelectableCells(bool support)
{
    tree->options.selectableCells = support;
    tree->ApplySelectionOptions();
}

void UI_MultiColumnTree::SetNumberOfColumns(int count)
{
    tree->ResetColumns(static_cast<unsigned>(std::max(0, count)));
}

void UI_MultiColumnTree::SetColumnWidth(int column, float width)
{
    if (!tree->view || column < 0 || column >= tree->model.columnCount())
        return;
    tree->view->setColumnWidth(column, std::max(0, static_cast<int>(std::lround(width))));
    if (column == tree->model.columnCount() - 1) {
        float before = 0;
        for (int left = 0; left < column; ++left)
            before += static_cast<float>(tree->view->columnWidth(left));
        tree->rightMargin = std::max(0.0F, tree->view->ContentWidth() - before - width);
    }
}

float UI_MultiColumnTree::GetContentViewWidth() const
{
    return tree->view ? tree->view->ContentWidth() : 0;
}

UI_MultiColumnTreeHeaderRow* UI_MultiColumnTree::GetHeaderRow() const
{
    return tree->header.get();
}

void UI_MultiColumnTree::SetDrawCellOfRowCallback(DrawCellOfRowCallback callback)
{
    tree->drawCell = std::move(callback);
    UI_Redraw();
}

void UI_MultiColumnTree::SetRowsSelectionChangedCallback(std::function<void()> callback)
{
    tree->rowsSelectionChanged = std::move(callback);
}

void UI_MultiColumnTree::SetRowVisibilityChangedCallback(RowCallback callback)
{
    tree->rowVisibilityChanged = std::move(callback);
}

void UI_MultiColumnTree::SetCellSelectionChangedCallback(std::function<void()> callback)
{
    tree->cellSelectionChanged = std::move(callback);
}

void UI_MultiColumnTree::SetCellSortDataFunction(CellSortDataFunction function)
{
    tree->sortData = std::move(function);
    tree->ForgetSortedPlaces();
}

void UI_MultiColumnTree::SetCellTextFunction(CellSortDataFunction function)
{
    tree->cellText = std::move(function);
    tree->ForgetSortedPlaces();
}

void UI_MultiColumnTree::SetCellTooltipFunction(CellSortDataFunction function)
{
    tree->cellTooltip = std::move(function);
}

void UI_MultiColumnTree::SetCutTextFunction(
    std::function<std::wstring(RowPtr, int cellIndex, float cellWidth)> function)
{
    tree->cutText = std::move(function);
}

void UI_MultiColumnTree::SetRowDetailsFunction(std::function<std::wstring(RowPtr)> function,
                                               const std::wstring& name, const std::wstring& prompt)
{
    zetcore::threads::AssertMainThread();
    tree->SetDetails(std::move(function), name, prompt);
}

void UI_MultiColumnTree::SetNotice(const std::wstring& text, const std::wstring& command,
                                   std::function<void()> pressed)
{
    zetcore::threads::AssertMainThread();
    tree->SetNotice(text, command, std::move(pressed));
}

void UI_MultiColumnTree::SetCellControlFunction(CellControlFunction function)
{
    tree->cellControl = std::move(function);
}

void UI_MultiColumnTree::SetRowMenuFunction(std::function<UI_ContextMenu(RowPtr)> function)
{
    tree->rowMenu = std::move(function);
}

void UI_MultiColumnTree::SetDeleteCallback(std::function<void()> callback)
{
    tree->deletePressed = std::move(callback);
}

void UI_MultiColumnTree::SetEmptyText(const std::wstring& text)
{
    tree->SetEmptyText(text);
}

void UI_MultiColumnTree::RemoveAllRows()
{
    zetcore::threads::AssertMainThread();
    tree->RemoveAllRows();
}

void UI_MultiColumnTree::AppendRow(const RowPtr& row, UI_MultiColumnTreeRow* parent, bool sortLater)
{
    zetcore::threads::AssertMainThread();
    if (parent)
        throw std::invalid_argument("Rows of a list have no parent");
    tree->Append(row, sortLater);
}

UI_MultiColumnTree::RowPtr UI_MultiColumnTree::CreateAndAppendRow()
{
    zetcore::threads::AssertMainThread();
    RowPtr row = utility::MakeIntrusive<UI_MultiColumnTreeRow>(true, this);
    tree->Append(row, true);
    return row;
}

void UI_MultiColumnTree::SortTree()
{
    zetcore::threads::AssertMainThread();
    tree->RequestSort();
}

void UI_MultiColumnTree::ForgetSortedPlaces()
{
    tree->ForgetSortedPlaces();
}

int UI_MultiColumnTree::GetRowCount() const
{
    zetcore::threads::AssertMainThread();
    return static_cast<int>(tree->rows.size());
}

UI_MultiColumnTree::RowPtr UI_MultiColumnTree::GetRowAt(int place) const
{
    zetcore::threads::AssertMainThread();
    tree->Flush();
    return tree->Hold(tree->model.RowAt(place));
}

int UI_MultiColumnTree::GetPlaceOfRow(const UI_MultiColumnTreeRow* row) const
{
    zetcore::threads::AssertMainThread();
    tree->Flush();
    return row && row->GetTree() == this ? tree->model.PlaceOf(row) : -1;
}

bool UI_MultiColumnTree::IsRowVisible(const UI_MultiColumnTreeRow* row) const
{
    return row && tree->cells.IsVisible(row);
}

void UI_MultiColumnTree::ScrollToTop(bool redraw)
{
    zetcore::threads::AssertMainThread();
    tree->ScrollToTop();
    if (redraw)
        UI_Redraw();
}

void UI_MultiColumnTree::ScrollToRow(const UI_MultiColumnTreeRow* row)
{
    zetcore::threads::AssertMainThread();
    tree->Flush();
    if (const int place = tree->model.PlaceOf(row); place >= 0 && tree->view)
        tree->view->ShowPlace(place);
}

std::vector<UI_MultiColumnTree::RowPtr> UI_MultiColumnTree::GetSelectedRows() const
{
    zetcore::threads::AssertMainThread();
    return tree->SelectedRows();
}

bool UI_MultiColumnTree::IsAnyRowSelected() const
{
    return tree->FirstSelectedPlace() >= 0;
}

void UI_MultiColumnTree::SelectRow(const UI_MultiColumnTreeRow* row, bool select)
{
    zetcore::threads::AssertMainThread();
    tree->Flush();
    tree->SelectAlso(tree->model.PlaceOf(row), select);
}

void UI_MultiColumnTree::DeselectAll()
{
    tree->DeselectAll();
}

int UI_MultiColumnTree::GetSelectedCellOfSelectedRow() const
{
    return tree->selectedCell;
}

void UI_MultiColumnTree::SelectCell(const UI_MultiColumnTreeRow* row, int position)
{
    zetcore::threads::AssertMainThread();
    tree->Flush();
    const int cell = position >= 0 && position < tree->model.columnCount() ? position : -1;
    if (const int place = tree->model.PlaceOf(row); place >= 0)
        tree->SelectOnly(place, cell);
}

bool UI_MultiColumnTree::EnterRows()
{
    zetcore::threads::AssertMainThread();
    if (!tree->view || tree->rows.empty())
        return false;
    // A field that loses the focus may tell of a text that changes the rows.
    UI_GainKeyboardFocus(ui::kFocusChangeProgram);
    return tree->keyboard.Enter();
}

bool UI_MultiColumnTree::UI_DoKeyboardEvent(ui::UI_Node* target, const ui::KeyboardEvent& event)
{
    if (event.GetOSCode() == ui::kTabKey && !event.IsControlDown() && !event.IsAltDown())
        return tree->keyboard.MoveThroughControls(!event.IsShiftDown());
    return UI_ControlView::UI_DoKeyboardEvent(target, event);
}

ScDeferLayoutForOpenAndCloseRow::ScDeferLayoutForOpenAndCloseRow(UI_MultiColumnTree* guarded) : tree(guarded)
{
    if (!tree)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTree");
    TreeAccess::StateOf(*tree).BeginDeferred();
}

ScDeferLayoutForOpenAndCloseRow::~ScDeferLayoutForOpenAndCloseRow()
{
    ui::CallFromToolkit([this] { TreeAccess::StateOf(*tree).EndDeferred(); });
}

} // namespace zetui::controls
