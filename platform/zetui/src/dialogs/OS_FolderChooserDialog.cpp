#include <zetui/dialogs/OS_FolderChooserDialog.h>

#include <zetcore/threads/MainThread.h>
#include <zetui/dialogs/ProgressPresentation.h>

namespace zetui::dialogs {

OS_NavigationDialog::~OS_NavigationDialog() = default;

OS_FolderChooserDialog::~OS_FolderChooserDialog() = default;

bool OS_FolderChooserDialog::RunModal()
{
    zetcore::threads::AssertMainThread();
    path = GetPresentation()->ChooseFolder(title, parent);
    return !path.empty();
}

} // namespace zetui::dialogs
