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
    constexpr float leastPath = 60;
    header->SetColumnGivesWay(kColumnPath, leastPath);
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
    keepsAll = find.KeepsAll();
    SayWhyItIsEmpty(false);
    if (resizeColumns)
        FitColumns();
    if (scrollToTop)
        tree->ScrollToTop(true);
}

void PluginListView::SayWhyItIsEmpty(bool scans)
{
    const char* const text =
        !keepsAll ? "$$$/AudioPluginManager/NoPluginFound=No plug-in matches the filter."
        : scans   ? "$$$/AudioPluginManager/LookingForPlugins=Scanning for plug-ins..."
                  : "$$$/AudioPluginManager/NoPlugins=No plug-ins yet. Scan to find those in your folders.";
    tree->SetEmptyText(Localizer::Get().LocalizeWide(text));
}

void PluginListView::FitColumns()
{
    Header& header = HeaderRow();
    for (const unsigned column : {kColumnName, kColumnStatus, kColumnVersion, kColumnPath})
        header.FitColumn(column, FittedColumnWidth(column, GetColumnBestFitWidth(column)));
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
    const bool tells = cellIndex == kEnabledCell || GetColumnOfCell(cellIndex) == kColumnStatus;
    if (!entry || entry->info || !tells)
        return {};
    const auto info = BannedPluginManager::GetInstance()->GetBanInfo(entry->locator);
    return info ? GetBanDescription(*info) : std::wstring();
}

std::wstring PluginListView::GetRowDetails(const Row* row) const
{
    const PluginListEntry* const entry = FindEntry(row);
    return entry ? GetDetails(*entry) : std::wstring();
}

CellText PluginListView::ShownText(const Row& row, const PluginListEntry& entry, int cellIndex) const
{
    using zetui::pixmill::TextTruncation;
    constexpr int cellShortenedInTheMiddle = 2;
    const unsigned column = GetColumnOfCell(cellIndex);
    CellText text{.text = GetCellText(column, entry),
                  .truncation =
                      cellIndex == cellShortenedInTheMiddle ? TextTruncation::Middle : TextTruncation::End,
                  .enabled = tree->UI_IsEnabled(),
                  .failure = column == kColumnStatus && !entry.info};
    // The button would cover the end of the text.
    if (cellIndex == kStatusCell)
        text.end = widgets.ReloadButtonLeft(row);
    return text;
}

std::wstring PluginListView::GetCutText(const Row* row, int cellIndex, float cellWidth) const
{
    const PluginListEntry* const entry = FindEntry(row);
    if (!entry || cellIndex == kEnabledCell)
        return {};
    CellText text = ShownText(*row, *entry, cellIndex);
    return ShownCellText(text, cellWidth) == text.text ? std::wstring() : std::move(text.text);
}

controls::CellControl PluginListView::GetCellControl(const Row* row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row);
    return entry ? PluginRowWidgets::ControlOf(*entry, cellIndex) : controls::CellControl();
}

void PluginListView::DrawCell(zetui::pixmill::Pixmill* context, const Row* row, int cellIndex,
                              const RectF& cell) const
{
    const PluginListEntry* const entry = FindEntry(row);
    if (cellIndex == kEnabledCell || !entry)
        return;
    if (!context)
        zetcore::utility::DoThrowNullPtrException("Pixmill");
    DrawCellText(*context, cell, ShownText(*row, *entry, cellIndex));
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
    float measuredWidth = 0;
    for (const PluginListContent::RowPtr& row : plugins.Rows()) {
        const PluginListEntry* const entry = FindEntry(row.get());
        if (!entry)
            continue;
        std::optional<float>& known = row->TextWidth(column);
        if (!known) {
            std::wstring text = GetCellText(column, *entry);
            // Many rows have the same text.
            if (text != measured || measuredWidth == 0) {
                measured = std::move(text);
                measuredWidth = zetui::pixmill::GetTextWidth(font, measured);
            }
            known = measuredWidth;
        }
        widest = std::max(widest, NeededCellWidth(*known, padding, reloadButtonWidth,
                                                  zetui::skins::GetListSizes().buttonGap));
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

int PluginListView::PlaceOf(const zetaudiofilterhost::PluginLocator& locator) const
{
    int ofModule = -1;
    for (int place = 0; place < tree->GetRowCount(); ++place) {
        const PluginListEntry* const entry = FindEntry(tree->GetRowAt(place).get());
        if (!entry)
            continue;
        if (entry->locator == locator)
            return place;
        if (ofModule < 0 && entry->locator.GetTechnologyType() == locator.GetTechnologyType() &&
            entry->locator.GetPath() == locator.GetPath())
            ofModule = place;
    }
    return ofModule;
}

void PluginListView::FocusPlugin(const zetaudiofilterhost::PluginLocator& locator, int lastPlace)
{
    tree->UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    const int found = PlaceOf(locator);
    const int place = found >= 0 ? found : std::min(lastPlace, tree->GetRowCount() - 1);
    const Ptr<Row> row = tree->GetRowAt(place);
    if (!row)
        return;
    const bool hasButton = tree->IsRowVisible(row.get()) && widgets.ReloadButtonLeft(*row);
    // The selected cell's control gets the focus.
    tree->SelectCell(row.get(), hasButton && found >= 0 ? kStatusCell : -1);
}

void PluginListView::SwitchPluginOf(const zetui::ui::UI_Node* checkbox)
{
    const PluginListEntry* const entry = FindEntry(widgets.RowOfCheckbox(checkbox));
    if (entry && entry->info)
        entry->info->SetEnabled(dynamic_cast<const controls::UI_Checkbox&>(*checkbox).IsChecked());
}

void PluginListView::EnablePlugin(const PluginListEntry& entry, bool enable)
{
    if (!entry.info)
        return;
    entry.info->SetEnabled(enable);
    if (const Ptr<Row> row = tree->GetRowAt(PlaceOf(entry.locator)))
        widgets.ShowEnabled(*row, enable);
}

const PluginListEntry* PluginListView::EntryOfReloadButton(const zetui::ui::UI_Node* button) const
{
    return FindEntry(widgets.RowOfReloadButton(button));
}

} // namespace zetaudiopluginhostui
