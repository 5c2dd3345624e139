#include "dialog/folders/FolderSection.h"

#include <utility>
#include <vector>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/utility/ClientName.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/dialogs/OS_FolderChooserDialog.h>
#include <zetui/dialogs/messagebox.h>

#include "dialog/drawing/CellDrawing.h"

namespace zetaudiopluginhostui {

using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::config::Localizer;
namespace messagebox = zetui::dialogs::messagebox;

namespace {

std::shared_ptr<zetaudiofilterhost::PluginTechnology> VstTechnology()
{
    return PluginModuleInfoManager::GetInstance()->GetPluginTechnology(
        zetaudiofilterhost::TechnologyType::VST);
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
    DrawCellText(*context, cell, {.text = folder->second, .enabled = list->UI_IsEnabled()});
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
    if (folder.Exists())
        VstTechnology()->AddPluginDirectories({folder.FullPath()});
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
    if (!paths.empty())
        VstTechnology()->RemovePluginDirectories(paths);
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
