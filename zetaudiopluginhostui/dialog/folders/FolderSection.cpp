#include "dialog/folders/FolderSection.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/utility/ClientName.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/dialogs/OS_FolderChooserDialog.h>
#include <zetui/dialogs/messagebox.h>

namespace zetaudiopluginhostui {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::config::Localizer;
using zetcore::filesupport::FolderState;
namespace messagebox = zetui::dialogs::messagebox;

namespace {

std::shared_ptr<zetaudiofilterhost::PluginTechnology> VstTechnology()
{
    return PluginModuleInfoManager::GetInstance()->GetPluginTechnology(
        zetaudiofilterhost::TechnologyType::VST);
}

std::wstring WordOf(FolderState state)
{
    return Localizer::Get().LocalizeWide(state == FolderState::Offline
                                             ? "$$$/AudioPluginManager/FolderOffline=offline"
                                             : "$$$/AudioPluginManager/FolderNotFound=not found");
}

float WordWidth(FolderState state)
{
    return std::ceil(zetui::pixmill::GetTextWidth(GetCellFont(), WordOf(state)));
}

} // namespace

FolderSection::FolderSection(Ptr<Tree> folderList, Ptr<zetui::controls::UI_TextButton> removeButton)
    : list(std::move(folderList)), remove(std::move(removeButton))
{
    if (list)
        SetUpList();
    if (remove)
        remove->UI_SetDisabled(true);
}

void FolderSection::SetUpList()
{
    list->SetAllowChildren(false);
    list->SetIndicateFocus(true);
    list->SetSupportNoneSelected(true);
    list->SetSupportDeselectAllOnEmptyTreeClick(true);
    list->SetSupportMultipleSelections(true);
    list->SetWantsKeyboardFocus(true);
    list->SetSupportNonArrowKeysToSelectRow(false);
    list->UI_SetAccessibleName(
        Localizer::Get().LocalizeWide("$$$/PluginManager/Dialog/VSTPluginFolders=VST Plug-In Folders:"));
    list->SetEmptyText(Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/NoFolders=No folders. Add those that hold your plug-ins."));
    list->SetNumberOfColumns(1);
    constexpr float roomAtTheRight = 12;
    list->SetColumnWidth(0, list->GetContentViewWidth() - roomAtTheRight);
}

void FolderSection::Fill()
{
    if (!list)
        return;
    const zetui::controls::ScDeferLayoutForOpenAndCloseRow deferredLayout(list.get());
    list->RemoveAllRows();
    folderOfRow.clear();
    const auto technology = VstTechnology();
    for (auto path = technology->DirectoryBegin(); path != technology->DirectoryEnd(); ++path)
        folderOfRow.insert_or_assign(list->CreateAndAppendRow().get(), *path);
    look = std::make_unique<zetcore::filesupport::FolderLook>(
        std::vector<std::wstring>(technology->DirectoryBegin(), technology->DirectoryEnd()),
        [this] { list->UI_Redraw(); });
}

FolderState FolderSection::StateOf(const std::wstring& folder) const
{
    return look ? look->StateOf(folder).value_or(FolderState::There) : FolderState::There;
}

std::wstring FolderSection::ReasonOf(const Row* row) const
{
    const auto folder = folderOfRow.find(row);
    const FolderState state = folder == folderOfRow.end() ? FolderState::There : StateOf(folder->second);
    if (state == FolderState::There)
        return {};
    return Localizer::Get().LocalizeWide(
        state == FolderState::NotFound
            ? "$$$/AudioPluginManager/FolderNotFoundReason=This folder does not exist."
            : "$$$/AudioPluginManager/FolderOfflineReason=This folder is on a drive that is not connected at "
              "the moment.");
}

CellText FolderSection::ShownText(const std::wstring& folder, float cellWidth) const
{
    const FolderState state = StateOf(folder);
    CellText text{.text = folder, .enabled = list->UI_IsEnabled() && state == FolderState::There};
    if (state != FolderState::There)
        text.end = cellWidth - WordWidth(state) - 2 * GetCellTextPadding();
    return text;
}

std::wstring FolderSection::GetCutText(const Row* row, float cellWidth) const
{
    const std::wstring folder = FolderOf(row);
    return ShownCellText(ShownText(folder, cellWidth), cellWidth) == folder ? std::wstring() : folder;
}

std::wstring FolderSection::FolderOf(const Row* row) const
{
    const auto folder = folderOfRow.find(row);
    return folder == folderOfRow.end() ? std::wstring() : folder->second;
}

void FolderSection::DrawCell(zetui::pixmill::Pixmill* context, const Row* row,
                             const zetcore::geom::RectT<float>& cell) const
{
    const auto folder = folderOfRow.find(row);
    if (folder == folderOfRow.end())
        return;
    if (!context)
        zetcore::utility::DoThrowNullPtrException("Pixmill");
    CellText text = ShownText(folder->second, cell.width);
    // Grey could not be read on the colour of a selected row.
    const bool selected = list->UI_IsEnabled() && IsSelected(row);
    text.enabled = text.enabled || selected;
    DrawCellText(*context, cell, text);
    const FolderState state = StateOf(folder->second);
    if (state == FolderState::There)
        return;
    // Why it is grey stands at the right end.
    const float width = WordWidth(state) + 2 * GetCellTextPadding();
    DrawCellText(*context, {cell.left + cell.width - width, cell.top, width, cell.height},
                 {.text = WordOf(state), .enabled = selected});
}

bool FolderSection::IsSelected(const Row* row) const
{
    const auto rows = list->GetSelectedRows();
    return std::any_of(rows.begin(), rows.end(), [row](const auto& each) { return each.get() == row; });
}

void FolderSection::UpdateRemoveButton()
{
    if (list && remove)
        remove->UI_SetEnabled(list->IsAnyRowSelected());
}

void FolderSection::AddChosenFolder(const zetui::ui::WindowVariant& window)
{
    zetui::dialogs::OS_FolderChooserDialog chooser{window};
    chooser.SetWindowTitle(
        Localizer::Get().LocalizeWide("$$$/AudioPluginManager/Browse/Title=Choose a Plug-In Folder:"));
    chooser.RunModal();
    const zetcore::filesupport::Dir folder(chooser.GetPath());
    if (!folder.Exists())
        return;
    VstTechnology()->AddPluginDirectories({folder.FullPath()});
    for (const auto& [row, path] : folderOfRow) {
        if (path != folder.FullPath())
            continue;
        list->DeselectAll();
        list->SelectRow(row, true);
        list->ScrollToRow(row);
        return;
    }
}

void FolderSection::RemoveSelectedFolders()
{
    if (!list)
        return;
    std::vector<std::wstring> paths;
    for (const Ptr<Row>& row : list->GetSelectedRows()) {
        const auto folder = folderOfRow.find(row.get());
        if (folder != folderOfRow.end())
            paths.push_back(folder->second);
    }
    if (paths.empty())
        return;
    const auto selected = list->GetSelectedRows();
    int place = list->GetRowCount() - 1;
    for (const Ptr<Row>& row : selected)
        place = std::min(place, list->GetPlaceOfRow(row.get()));
    // The remove button is disabled when its folders are gone. The focus must not go to the button beside it.
    list->UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    VstTechnology()->RemovePluginDirectories(paths);
    const auto next = list->GetRowAt(std::min(place, list->GetRowCount() - 1));
    if (!next)
        return;
    list->SelectRow(next.get(), true);
    list->ScrollToRow(next.get());
}

void FolderSection::ResetToDefaultFolders(const zetui::pixmill::SupplierInterface* supplier,
                                          const zetui::ui::WindowVariant& window)
{
    const auto technology = VstTechnology();
    int answer = messagebox::kYes;
    if (technology->DirectoryBegin() != technology->DirectoryEnd())
        answer = messagebox::Messagebox(
            supplier, zetcore::utility::GetClientName(),
            Localizer::Get().LocalizeWide(
                "$$$/AudioPluginManager/DefaultFoldersWarning=Resetting the application's VST Plug-In folder "
                "settings to the default will delete any custom folders that have been specified. Do you "
                "want "
                "to continue?"),
            window, messagebox::kYesNo, messagebox::kNo, messagebox::kIconCaution);
    if (answer == messagebox::kYes)
        PluginModuleInfoManager::GetInstance()->ResetToDefaultFolders();
}

} // namespace zetaudiopluginhostui
