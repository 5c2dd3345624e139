#include "dialog/list/PluginListView.h"

#include <algorithm>
#include <utility>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/Pixmill.h>
#include <zetui/skins/ListSizes.h>

#include "dialog/drawing/CellDrawing.h"
#include "dialog/list/ColumnWidths.h"
#include "dialog/list/PluginListText.h"

namespace zetaudiopluginhostui {

namespace controls = zetui::controls;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::config::Localizer;
using zetui::utility::MakeIntrusive;

PluginListView::PluginListView(Ptr<PluginMultiColumnTree> pluginTree,
                               const zetui::pixmill::SupplierInterface* supplier,
                               PluginRowWidgets::Handlers handlers)
    : tree(std::move(pluginTree)), widgets(*tree, supplier, std::move(handlers))
{
    SetUpTree();
    AppendColumns();
}

void PluginListView::SetUpTree()
{
    tree->SetAllowChildren(false);
    tree->SetIndicateFocus(false);
    tree->SetSupportNoneSelected(true);
    tree->SetSupportDeselectAllOnEmptyTreeClick(true);
    tree->SetSupportMultipleSelections(false);
    tree->SetWantsKeyboardFocus(true);
    tree->SetSupportNonArrowKeysToSelectRow(false);
    tree->SetNumberOfColumns(0);
    tree->SetSupportUserSelectableRows(true);
    tree->SetSupportUserSelectableCells(true);
    tree->UI_SetAccessibleName(
        Localizer::Get().LocalizeWide("$$$/PluginManager/Dialog/AvailablePlugins=Available Plug-Ins:"));
}

void PluginListView::AppendColumns()
{
    const auto header = MakeIntrusive<Header>(tree.get());
    for (const PluginColumnSpec& column : PluginColumns())
        header->AppendColumn(Localizer::Get().LocalizeWide(column.titleKey), column.id);
    for (const PluginColumnSpec& column : PluginColumns())
        header->SetColumnWidth(column.id, column.width);
    header->SetLastColumnTakesFreeWidth(true);
    // A control belongs to a place in its row, so the columns with controls must stay there.
    header->SetColumnKeepsPlace(kColumnEnabled, true);
    header->SetColumnKeepsPlace(kColumnStatus, true);
}

PluginListView::Header& PluginListView::HeaderRow() const
{
    Header* const header = tree->GetHeaderRow();
    if (!header)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTreeHeaderRow");
    return *header;
}

void PluginListView::Fill(const zetaudiofilterhost::PluginFind& find, bool resizeColumns, bool scrollToTop)
{
    if (plugins.Update())
        tree->ForgetSortedPlaces();
    const controls::ScDeferLayoutForOpenAndCloseRow deferredLayout(tree.get());
    tree->RemoveAllRows();
    widgets.RemoveAll();
    for (const PluginListContent::RowPtr& row : plugins.Find(find))
        tree->AppendRow(row, nullptr, true);
    tree->SetEmptyText(Localizer::Get().LocalizeWide(
        find.KeepsAll()
            ? "$$$/AudioPluginManager/NoPlugins=No plug-ins yet. Scan to find those in your folders."
            : "$$$/AudioPluginManager/NoPluginFound=No plug-in matches the filter."));
    if (resizeColumns)
        FitColumns();
    if (scrollToTop)
        tree->ScrollToTop(true);
}

void PluginListView::FitColumns()
{
    Header& header = HeaderRow();
    for (const unsigned column : {kColumnName, kColumnStatus, kColumnVersion, kColumnPath})
        header.SetColumnWidth(column, FittedColumnWidth(column, GetColumnBestFitWidth(column)));
}

void PluginListView::OnRowVisibilityChanged(Row* row)
{
    if (!row)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTreeRow");
    if (!tree->IsRowVisible(row)) {
        widgets.Remove(*row);
        return;
    }
    if (const PluginListEntry* const entry = FindEntry(row))
        widgets.Add(*row, *entry);
}

const PluginListEntry* PluginListView::FindEntry(const Row* row) const
{
    if (!row || row->GetTree() != tree.get())
        return nullptr;
    // Rows that somebody else has appended to the list carry nothing.
    const auto* const own = dynamic_cast<const PluginListRow*>(row);
    return own ? &own->Entry() : nullptr;
}

unsigned PluginListView::GetColumnOfCell(int cellIndex) const
{
    return HeaderRow().GetColumnAt(cellIndex);
}

std::wstring PluginListView::GetCellSortData(const Row* row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row);
    if (!entry)
        return {};
    return cellIndex == kEnabledCell ? GetEnabledSortText(*entry)
                                     : GetCellText(GetColumnOfCell(cellIndex), *entry);
}

std::wstring PluginListView::GetCellDescription(const Row* row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row);
    if (!entry)
        return {};
    return cellIndex == kEnabledCell ? GetEnabledDescription(*entry)
                                     : GetCellText(GetColumnOfCell(cellIndex), *entry);
}

std::wstring PluginListView::GetCellTooltip(const Row* row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row);
    if (!entry || entry->info || GetColumnOfCell(cellIndex) != kColumnStatus)
        return {};
    const auto info = BannedPluginManager::GetInstance()->GetBanInfo(entry->locator);
    return info ? GetBanDescription(*info) : std::wstring();
}

void PluginListView::DrawCell(zetui::pixmill::Pixmill* context, const Row* row, int cellIndex,
                              const RectF& cell) const
{
    using zetui::pixmill::TextTruncation;
    const PluginListEntry* const entry = FindEntry(row);
    if (cellIndex == kEnabledCell || !entry)
        return;
    if (!context)
        zetcore::utility::DoThrowNullPtrException("Pixmill");
    constexpr int cellShortenedInTheMiddle = 2;
    const unsigned column = GetColumnOfCell(cellIndex);
    CellText text{.text = GetCellText(column, *entry),
                  .truncation =
                      cellIndex == cellShortenedInTheMiddle ? TextTruncation::Middle : TextTruncation::End,
                  .enabled = tree->UI_IsEnabled(),
                  .failure = column == kColumnStatus && !entry->info};
    // The button would cover the end of the text.
    if (cellIndex == kStatusCell)
        text.end = widgets.ReloadButtonLeft(*row);
    DrawCellText(*context, cell, text);
}

float PluginListView::GetColumnBestFitWidth(unsigned column) const
{
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    const bool hasReloadButtons = column == kColumnStatus && banned.BannedBegin() != banned.BannedEnd();
    const float reloadButtonWidth = hasReloadButtons ? widgets.ReloadButtonWidth() : 0;
    const float padding = GetCellTextPadding();
    const zetui::pixmill::Font font = GetCellFont();
    float widest = 0;
    std::wstring measured;
    for (const PluginListContent::RowPtr& row : plugins.Rows()) {
        const PluginListEntry* const entry = FindEntry(row.get());
        if (!entry)
            continue;
        std::wstring text = GetCellText(column, *entry);
        // Measuring takes the time here, and many rows have the same text.
        if (widest > 0 && text == measured)
            continue;
        measured = std::move(text);
        widest = std::max(widest, NeededCellWidth(zetui::pixmill::GetTextWidth(font, measured), padding,
                                                  reloadButtonWidth, zetui::skins::GetListSizes().buttonGap));
    }
    return widest;
}

void PluginListView::FocusControlOfSelectedCell()
{
    const int cell = tree->GetSelectedCellOfSelectedRow();
    const auto rows = tree->GetSelectedRows();
    if (cell == -1 || rows.empty())
        return;
    const auto view = rows.front()->GetCellView(cell);
    if (view && view->ChildCount() > 0)
        view->GetChild(0)->UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
}

void PluginListView::SwitchPluginOf(const zetui::ui::UI_Node* checkbox)
{
    const PluginListEntry* const entry = FindEntry(widgets.RowOfCheckbox(checkbox));
    if (entry && entry->info)
        entry->info->SetEnabled(dynamic_cast<const controls::UI_Checkbox&>(*checkbox).IsChecked());
}

const PluginListEntry* PluginListView::EntryOfReloadButton(const zetui::ui::UI_Node* button) const
{
    return FindEntry(widgets.RowOfReloadButton(button));
}

} // namespace zetaudiopluginhostui
