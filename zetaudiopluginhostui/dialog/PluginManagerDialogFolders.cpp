// The folder list of the manager dialog and its commands.
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/utility/ClientName.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/dialogs/OS_FolderChooserDialog.h>
#include <zetui/dialogs/messagebox.h>

#include "dialog/CellDrawing.h"
#include "dialog/PluginManagerDialog.h"

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

void PluginManagerDialog::PopulateFolderList()
{
    if (!directoryList)
        return;
    const zetui::controls::ScDeferLayoutForOpenAndCloseRow deferredLayout(directoryList.get());
    directoryList->RemoveAllRows();
    folderOfRow.clear();
    const auto technology = VstTechnology();
    for (auto path = technology->DirectoryBegin(); path != technology->DirectoryEnd(); ++path)
        folderOfRow.insert_or_assign(directoryList->CreateAndAppendRow().get(), *path);
}

void PluginManagerDialog::OnPluginDirectoriesChanged(
    const std::shared_ptr<zetaudiofilterhost::PluginTechnology>& /*technology*/)
{
    PopulateFolderList();
}

void PluginManagerDialog::DrawFolderCell(zetui::pixmill::Pixmill* context, const RowPtr& row,
                                         const RectF& cell)
{
    const auto folder = folderOfRow.find(row.get());
    if (folder == folderOfRow.end())
        return;
    if (!context)
        zetcore::utility::DoThrowNullPtrException("Pixmill");
    DrawCellText(*context, cell, {.text = folder->second, .enabled = directoryList->UI_IsEnabled()});
}

std::wstring PluginManagerDialog::GetFolder(const Row* row) const
{
    const auto folder = folderOfRow.find(row);
    return folder == folderOfRow.end() ? std::wstring() : folder->second;
}

void PluginManagerDialog::OnFolderSelectionChanged()
{
    if (removeDirectoryButton)
        removeDirectoryButton->UI_SetEnabled(directoryList->IsAnyRowSelected());
}

void PluginManagerDialog::OnAddFolder(ButtonChanged* /*message*/)
{
    zetui::dialogs::OS_FolderChooserDialog chooser{zetui::ui::WindowVariant(GetNativeWindow())};
    chooser.SetWindowTitle(
        Localizer::Get().LocalizeWide("$$$/AudioPluginManager/Browse/Title=Choose a Plug-In Folder:"));
    chooser.RunModal();
    const zetcore::filesupport::Dir folder(chooser.GetPath());
    if (folder.Exists())
        VstTechnology()->AddPluginDirectories({folder.FullPath()});
}

void PluginManagerDialog::OnRemoveFolders(ButtonChanged* /*message*/)
{
    if (!directoryList)
        return;
    std::vector<std::wstring> paths;
    for (const RowPtr& row : directoryList->GetSelectedRows()) {
        const auto folder = folderOfRow.find(row.get());
        if (folder != folderOfRow.end())
            paths.push_back(folder->second);
    }
    if (!paths.empty())
        VstTechnology()->RemovePluginDirectories(paths);
}

void PluginManagerDialog::OnDefaultFolders(ButtonChanged* /*message*/)
{
    const auto technology = VstTechnology();
    int answer = messagebox::kYes;
    if (technology->DirectoryBegin() != technology->DirectoryEnd())
        answer = messagebox::Messagebox(
            GetSupplier(), zetcore::utility::GetClientName(),
            Localizer::Get().LocalizeWide(
                "$$$/AudioPluginManager/DefaultFoldersWarning=Resetting the application's VST Plug-In folder "
                "settings to the default will delete any custom folders that have been specified. Do you "
                "want "
                "to continue?"),
            zetui::ui::WindowVariant(GetNativeWindow()), messagebox::kYesNo, messagebox::kNo,
            messagebox::kIconCaution);
    if (answer == messagebox::kYes)
        PluginModuleInfoManager::GetInstance()->ResetToDefaultFolders();
}

} // namespace zetaudiopluginhostui
