#pragma once

#include <map>
#include <memory>
#include <string>

#include <zetcore/filesupport/sharing/FolderLook.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/screen/WindowVariant.h>
#include <zetui/tree/UI_MultiColumnTree.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/drawing/CellDrawing.h"

namespace zetaudiopluginhostui {

/// The list of the VST folders and what its buttons do. The folders belong to the registry. The section shows
/// them, and whoever owns the section fills it again when they change. Main thread.
class FolderSection
{
  public:
    using Tree = zetui::controls::UI_MultiColumnTree;
    using Row = zetui::controls::UI_MultiColumnTreeRow;
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;

    /// Either may be null. The section then does what it can do without.
    FolderSection(Ptr<Tree> folderList, Ptr<zetui::controls::UI_TextButton> removeButton);

    /// Null when the dialog has no folder list.
    const Ptr<Tree>& List() const noexcept { return list; }
    /// Shows the registry's folders, in its order.
    void Fill();
    /// Empty for a row that is no folder's.
    std::wstring FolderOf(const Row* row) const;
    void DrawCell(zetui::pixmill::Pixmill* context, const Row* row,
                  const zetcore::geom::RectT<float>& cell) const;
    /// The remove button is enabled while a folder is selected.
    void UpdateRemoveButton();

    /// Lets the user choose a folder and adds it. The list then shows it, selected. Nothing changes when the
    /// user cancels.
    void AddChosenFolder(const zetui::ui::WindowVariant& window);
    /// Why the row's folder cannot be searched. Empty for one that is there, or that has not been looked at.
    std::wstring ReasonOf(const Row* row) const;
    /// The row's path when a cell that is so wide shows only a part of it; otherwise empty.
    std::wstring GetCutText(const Row* row, float cellWidth) const;
    /// The focus then is on the folder that follows.
    void RemoveSelectedFolders();
    /// Asks first, unless there is no folder to lose.
    static void ResetToDefaultFolders(const zetui::pixmill::SupplierInterface* supplier,
                                      const zetui::ui::WindowVariant& window);

  private:
    void SetUpList();
    zetcore::filesupport::FolderState StateOf(const std::wstring& folder) const;
    CellText ShownText(const std::wstring& folder, float cellWidth) const;
    bool IsSelected(const Row* row) const;

    Ptr<Tree> list;
    Ptr<zetui::controls::UI_TextButton> remove;
    /// The rows that are in the list now.
    std::map<const Row*, std::wstring> folderOfRow;
    /// Null before the first fill.
    std::unique_ptr<zetcore::filesupport::FolderLook> look;
};

} // namespace zetaudiopluginhostui
