// The handlers of the manager dialog that hand their work on to its parts.
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/utility/NullPtrException.h>

#include "dialog/PluginManagerDialog.h"

namespace zetaudiopluginhostui {

using zetaudiofilterhost::PluginModuleInfoManager;

PluginListView& PluginManagerDialog::RequirePluginList() const
{
    if (!plugins)
        zetcore::utility::DoThrowNullPtrException("PluginMultiColumnTree");
    return *plugins;
}

void PluginManagerDialog::PopulatePluginList(bool resizeColumns, bool scrollToTop)
{
    if (plugins)
        plugins->Fill(zetaudiofilterhost::PluginFind(findStrip->Text()), resizeColumns, scrollToTop);
    TellOfUnseenFilter();
    PluginModuleInfoManager& registry = *PluginModuleInfoManager::GetInstance();
    const bool registryEmpty = registry.PluginInfoBegin() == registry.PluginInfoEnd();
    for (const auto& button : {enableAllButton, disableAllButton}) {
        if (button)
            button->UI_SetDisabled(registryEmpty);
    }
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

std::wstring PluginManagerDialog::GetCellSortData(const RowPtr& row, int cellIndex) const
{
    return RequirePluginList().GetCellSortData(row.get(), cellIndex);
}

void PluginManagerDialog::DrawCellOfRow(zetui::pixmill::Pixmill* context, const RowPtr& row, int cellIndex,
                                        const RectF& cell)
{
    RequirePluginList().DrawCell(context, row.get(), cellIndex, cell);
}

float PluginManagerDialog::GetColumnBestFitWidth(unsigned column) const
{
    return RequirePluginList().GetColumnBestFitWidth(column);
}

void PluginManagerDialog::OnPluginRowVisibilityChanged(const RowPtr& row)
{
    RequirePluginList().OnRowVisibilityChanged(row.get());
}

void PluginManagerDialog::OnCellSelectionChanged()
{
    RequirePluginList().FocusControlOfSelectedCell();
}

void PluginManagerDialog::OnEnableCheckboxChanged(ButtonChanged* message)
{
    RequirePluginList().SwitchPluginOf(message->GetControl());
}

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
    findStrip->OnTextChanged(message);
}

void PluginManagerDialog::OnFindTextChangedInteractively(
    zetui::ui::UI_InteractiveControlChangedMessage* message)
{
    findStrip->OnTextChangedInteractively(message);
}

void PluginManagerDialog::PopulateFolderList()
{
    folders->Fill();
}

void PluginManagerDialog::OnPluginDirectoriesChanged(
    const std::shared_ptr<zetaudiofilterhost::PluginTechnology>& /*technology*/)
{
    PopulateFolderList();
}

void PluginManagerDialog::DrawFolderCell(zetui::pixmill::Pixmill* context, const RowPtr& row,
                                         const RectF& cell)
{
    folders->DrawCell(context, row.get(), cell);
}

void PluginManagerDialog::OnFolderSelectionChanged()
{
    folders->UpdateRemoveButton();
}

void PluginManagerDialog::OnAddFolder(ButtonChanged* /*message*/)
{
    folders->AddChosenFolder(zetui::ui::WindowVariant(GetNativeWindow()));
}

void PluginManagerDialog::OnRemoveFolders(ButtonChanged* /*message*/)
{
    folders->RemoveSelectedFolders();
}

void PluginManagerDialog::OnDefaultFolders(ButtonChanged* /*message*/)
{
    FolderSection::ResetToDefaultFolders(GetSupplier(), zetui::ui::WindowVariant(GetNativeWindow()));
}

} // namespace zetaudiopluginhostui
