// The plug-in list of the manager dialog.
#include <algorithm>
#include <utility>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/Pixmill.h>
#include <zetui/skins/ListSizes.h>

#include "dialog/CellDrawing.h"
#include "dialog/ColumnWidths.h"
#include "dialog/PluginListText.h"
#include "dialog/PluginManagerDialog.h"

namespace zetaudiopluginhostui {

namespace controls = zetui::controls;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::config::Localizer;
using zetui::utility::MakeIntrusive;

void PluginManagerDialog::PopulatePluginList(bool resizeColumns, bool scrollToTop)
{
    if (pluginList) {
        if (plugins.Update())
            pluginList->ForgetSortedPlaces();
        FillPluginList(resizeColumns, scrollToTop);
    }
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    const bool registryEmpty = registry.PluginInfoBegin() == registry.PluginInfoEnd();
    if (enableAllButton)
        enableAllButton->UI_SetDisabled(registryEmpty);
    if (disableAllButton)
        disableAllButton->UI_SetDisabled(registryEmpty);
}

void PluginManagerDialog::FillPluginList(bool resizeColumns, bool scrollToTop)
{
    const controls::ScDeferLayoutForOpenAndCloseRow deferredLayout(pluginList.get());
    pluginList->RemoveAllRows();
    checkboxOfRow.clear();
    reloadButtonOfRow.clear();
    const zetaudiofilterhost::PluginFind find(findTextEdit ? findTextEdit->GetValue() : std::wstring());
    for (const PluginListContent::RowPtr& row : plugins.Find(find))
        pluginList->AppendRow(row, nullptr, true);
    pluginList->SetEmptyText(Localizer::Get().LocalizeWide(
        find.KeepsAll()
            ? "$$$/AudioPluginManager/NoPlugins=No plug-ins yet. Scan to find those in your folders."
            : "$$$/AudioPluginManager/NoPluginFound=No plug-in matches the filter."));
    if (resizeColumns)
        FitPluginColumns();
    if (scrollToTop)
        pluginList->ScrollToTop(true);
}

void PluginManagerDialog::FitPluginColumns()
{
    controls::UI_MultiColumnTreeHeaderRow& header = RequirePluginHeader();
    for (const unsigned column : {kColumnName, kColumnStatus, kColumnVersion, kColumnPath})
        header.SetColumnWidth(column, FittedColumnWidth(column, GetColumnBestFitWidth(column)));
}

void PluginManagerDialog::SetAllPluginsEnabled(bool enabled)
{
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    for (auto info = registry.PluginInfoBegin(); info != registry.PluginInfoEnd(); ++info) {
        if (*info)
            (*info)->SetEnabled(enabled);
    }
    PopulatePluginList(false, false);
}

const PluginListEntry* PluginManagerDialog::FindEntry(const Row* row) const
{
    if (!row || row->GetTree() != pluginList.get())
        return nullptr;
    // Rows that somebody else has appended to the list carry nothing.
    const auto* const own = dynamic_cast<const PluginListRow*>(row);
    return own ? &own->Entry() : nullptr;
}

unsigned PluginManagerDialog::GetColumnOfCell(int cellIndex) const
{
    return RequirePluginHeader().GetColumnAt(cellIndex);
}

controls::UI_MultiColumnTreeHeaderRow& PluginManagerDialog::RequirePluginHeader() const
{
    if (!pluginList)
        zetcore::utility::DoThrowNullPtrException("PluginMultiColumnTree");
    controls::UI_MultiColumnTreeHeaderRow* const header = pluginList->GetHeaderRow();
    if (!header)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTreeHeaderRow");
    return *header;
}

std::wstring PluginManagerDialog::GetCellSortData(const RowPtr& row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row.get());
    if (!entry)
        return {};
    return cellIndex == kEnabledCell ? GetEnabledSortText(*entry)
                                     : GetCellText(GetColumnOfCell(cellIndex), *entry);
}

std::wstring PluginManagerDialog::GetCellDescription(const RowPtr& row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row.get());
    if (!entry)
        return {};
    return cellIndex == kEnabledCell ? GetEnabledDescription(*entry)
                                     : GetCellText(GetColumnOfCell(cellIndex), *entry);
}

std::wstring PluginManagerDialog::GetCellTooltip(const RowPtr& row, int cellIndex) const
{
    const PluginListEntry* const entry = FindEntry(row.get());
    if (!entry || entry->info || GetColumnOfCell(cellIndex) != kColumnStatus)
        return {};
    const auto info = BannedPluginManager::GetInstance()->GetBanInfo(entry->locator);
    return info ? GetBanDescription(*info) : std::wstring();
}

void PluginManagerDialog::DrawCellOfRow(zetui::pixmill::Pixmill* context, const RowPtr& row, int cellIndex,
                                        const RectF& cell)
{
    using zetui::pixmill::TextTruncation;
    const PluginListEntry* const entry = FindEntry(row.get());
    if (cellIndex == kEnabledCell || !entry)
        return;
    if (!context)
        zetcore::utility::DoThrowNullPtrException("Pixmill");
    constexpr int cellShortenedInTheMiddle = 2;
    const unsigned column = GetColumnOfCell(cellIndex);
    CellText text{.text = GetCellText(column, *entry),
                  .truncation =
                      cellIndex == cellShortenedInTheMiddle ? TextTruncation::Middle : TextTruncation::End,
                  .enabled = pluginList->UI_IsEnabled(),
                  .failure = column == kColumnStatus && !entry->info};
    // The button in the cell covers what is below it.
    if (const auto button = reloadButtonOfRow.find(row.get());
        cellIndex == kStatusCell && button != reloadButtonOfRow.end())
        text.end = button->second->UI_GetLocalRectF(true).left;
    DrawCellText(*context, cell, text);
}

float PluginManagerDialog::GetColumnBestFitWidth(unsigned column) const
{
    const BannedPluginManager& banned = *BannedPluginManager::GetInstance();
    const bool hasReloadButtons = column == kColumnStatus && banned.BannedBegin() != banned.BannedEnd();
    const float reloadButtonWidth = hasReloadButtons ? GetReloadButtonWidth() : 0;
    const float padding = GetCellTextPadding();
    const zetui::pixmill::Font font = GetCellFont();
    float widest = 0;
    std::wstring measured;
    for (const PluginListContent::RowPtr& row : plugins.Rows()) {
        const PluginListEntry* const entry = FindEntry(row.get());
        if (!entry)
            continue;
        std::wstring text = GetCellText(column, *entry);
        // Many rows have the same text; measuring is what takes the time.
        if (widest > 0 && text == measured)
            continue;
        measured = std::move(text);
        widest = std::max(widest, NeededCellWidth(zetui::pixmill::GetTextWidth(font, measured), padding,
                                                  reloadButtonWidth, zetui::skins::GetListSizes().buttonGap));
    }
    return widest;
}

void PluginManagerDialog::OnCellSelectionChanged()
{
    const int cell = pluginList->GetSelectedCellOfSelectedRow();
    const auto rows = pluginList->GetSelectedRows();
    if (cell == -1 || rows.empty())
        return;
    const auto view = rows.front()->GetCellView(cell);
    if (view && view->ChildCount() > 0)
        view->GetChild(0)->UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
}

void PluginManagerDialog::OnEnableCheckboxChanged(ButtonChanged* message)
{
    const auto* const checkbox = dynamic_cast<Checkbox*>(message->GetControl());
    if (!checkbox)
        zetcore::config::ThrowInvalidTypeConversion();
    const auto found = std::find_if(checkboxOfRow.begin(), checkboxOfRow.end(),
                                    [checkbox](const auto& each) { return each.second.get() == checkbox; });
    if (found == checkboxOfRow.end())
        return;
    const PluginListEntry* const entry = FindEntry(found->first);
    if (!entry || !entry->info)
        return;
    entry->info->SetEnabled(checkbox->IsChecked());
}

/// The list is filled again by what changes it: a scan raises this signal before its end.
void PluginManagerDialog::OnPluginInfosChanged() {}

void PluginManagerDialog::OnEnableAll(ButtonChanged* /*message*/)
{
    SetAllPluginsEnabled(true);
}

void PluginManagerDialog::OnDisableAll(ButtonChanged* /*message*/)
{
    SetAllPluginsEnabled(false);
}

void PluginManagerDialog::OnFindTextChanged(zetui::ui::UI_ControlChangedMessage* message)
{
    findTextEdit->EditTextChanged(message);
    ApplyFindText();
}

void PluginManagerDialog::OnFindTextChangedInteractively(
    zetui::ui::UI_InteractiveControlChangedMessage* message)
{
    findTextEdit->EditTextChangedInteractively(message);
    ApplyFindText();
}

void PluginManagerDialog::ApplyFindText()
{
    std::wstring text = findTextEdit->GetValue();
    if (text == findText)
        return;
    findText = std::move(text);
    PopulatePluginList(false, true);
}

} // namespace zetaudiopluginhostui
