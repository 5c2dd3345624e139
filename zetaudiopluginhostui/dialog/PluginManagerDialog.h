#pragma once

#include <memory>
#include <string>

#include <zetaudiofilterhost/PluginTechnology.h>
#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetcore/signals/ScopedConnection.h>
#include <zetui/archiveddialog/UI_ArchivedDialog.h>
#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/nodes/UI_Message.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/tree/UI_MultiColumnTree.h>

#include "dialog/ScanShortcut.h"
#include "dialog/drawing/BoxView.h"
#include "dialog/find/FindBoxKeys.h"
#include "dialog/find/FindStrip.h"
#include "dialog/folders/FolderSection.h"
#include "dialog/list/PluginListView.h"

namespace zetaudiopluginhostui {

class Preferences;

/// The modal "Audio Plug-In Manager". It shows the registry and the list of banned plug-ins, and changes them
/// at once. Whoever runs it saves or reloads them afterwards. Main thread.
///
/// The dialog finds the controls of its layout archive and binds their messages to its handlers. The work is
/// done by its three parts, which do not know the dialog: the folders, the plug-in list and the find strip.
class PluginManagerDialog : public zetui::ui::UI_ArchivedDialog
{
  public:
    /// Builds the dialog from its layout archive and fills its lists. Supplier, resources and settings are
    /// not owned. The destructor writes the settings back. Throws `archive_error`, and the
    /// invalid-type-conversion error for an archive that lacks one of the two option checkboxes.
    PluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                        const zetui::utility::ResourceManager* resources,
                        AudioPluginManagerSettings& settings, HWND parent);

    bool UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target, const zetui::ui::KeyboardEvent& event) override;
    void UI_SizeChanged(const RectF& bounds) override;
    Response RunModal() override;

  protected:
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;
    using Row = zetui::controls::UI_MultiColumnTreeRow;
    using RowPtr = Ptr<Row>;

    ~PluginManagerDialog() override;
    /// Makes the widgets of a row that has come into sight, and drops those of one that has left. A null row,
    /// and one without the cells for its widgets, raises the null-pointer error.
    void OnPluginRowVisibilityChanged(const RowPtr& row);

  private:
    using Button = zetui::controls::UI_TextButton;
    using Checkbox = zetui::controls::UI_Checkbox;
    using ButtonChanged = zetui::ui::UI_ButtonChangedMessage;
    /// Null when there is no such control, or one of another class.
    template<typename Control>
    Ptr<Control> FindControl(const char* id) const;
    template<typename Control>
    Ptr<Control> RequireControl(const char* id) const;

    // Construction. The dialog does without a control that the archive lacks, or has of another class. Only
    // the two option checkboxes are required. A handler that may be called when the dialog is gone is bound
    // through the dialog's weak key: somebody else may hold its control, or it runs a modal dialog of its
    // own.
    Ptr<zetui::ui::UI_Node> CreateArchivedNode(const std::string& className);
    void SetUpOptions();
    void SetUpFolders();
    void SetFolderListCallbacks();
    void SetUpPluginList();
    void SetPluginListCallbacks();
    void SetUpFindStrip();
    void SetUpPluginCommands();
    /// The trees live longer than the parts that their callbacks need, so the callbacks are taken away.
    void ForgetListCallbacks();

    // The plug-in list.
    /// Reads the registry and the banned list, and shows the plug-ins that the find box lets through. The
    /// buttons that switch all plug-ins are enabled when the registry holds any.
    void PopulatePluginList(bool resizeColumns, bool scrollToTop);
    void SetAllPluginsEnabled(bool enabled);
    /// Raises the null-pointer error when the archive has no plug-in list.
    PluginListView& RequirePluginList() const;
    std::wstring GetCellSortData(const RowPtr& row, int cellIndex) const;
    void DrawCellOfRow(zetui::pixmill::Pixmill* context, const RowPtr& row, int cellIndex, const RectF& cell);
    float GetColumnBestFitWidth(unsigned column) const;
    void OnCellSelectionChanged();
    void OnEnableCheckboxChanged(ButtonChanged* message);
    /// Does nothing, because a scan raises this signal before its end. The list is filled again by what
    /// changes it.
    void OnPluginInfosChanged();
    void OnEnableAll(ButtonChanged* message);
    void OnDisableAll(ButtonChanged* message);

    // The menus of the rows.
    zetui::controls::UI_ContextMenu MakeRowMenu(const RowPtr& row);
    void TellThatNoFolderOpens(const zetaudiofilterhost::PluginLocator& locator) const;
    void ShowLog(const PluginListEntry& entry) const;

    // The find strip.
    /// The list says that it is narrowed where the box that narrows it has no room.
    void TellOfUnseenFilter();
    void OnFindTextChanged(zetui::ui::UI_ControlChangedMessage* message);
    void OnFindTextChangedInteractively(zetui::ui::UI_InteractiveControlChangedMessage* message);

    // Folders.
    void PopulateFolderList();
    void OnPluginDirectoriesChanged(const std::shared_ptr<zetaudiofilterhost::PluginTechnology>& technology);
    void DrawFolderCell(zetui::pixmill::Pixmill* context, const RowPtr& row, const RectF& cell);
    void OnFolderSelectionChanged();
    void OnAddFolder(ButtonChanged* message);
    void OnRemoveFolders(ButtonChanged* message);
    void OnDefaultFolders(ButtonChanged* message);

    // Scans.
    void OnScanForPlugins(ButtonChanged* message);
    void OnReloadPlugin(ButtonChanged* message);
    /// The focus is in the plug-in's row then.
    void ReloadPlugin(const zetaudiofilterhost::PluginLocator& locator);
    void RescanPlugin(const zetaudiofilterhost::PluginLocator& locator, Preferences& preferences) const;

    Ptr<BoxView> pluginTreeSection;
    Ptr<Button> enableAllButton, disableAllButton;
    Ptr<Checkbox> rescanExistingCheckbox, separateProcessCheckbox;
    // The parts. They are null until they are set up.
    std::unique_ptr<FolderSection> folders;
    /// Null when the archive has no plug-in list.
    std::unique_ptr<PluginListView> plugins;
    std::unique_ptr<FindStrip> findStrip;
    /// Null when the archive lacks the controls for it.
    std::unique_ptr<FindBoxKeys> findBoxKeys;
    std::unique_ptr<ScanShortcut> scanShortcut;
    zetcore::events::ScopedConnection directoriesChangedConnection, pluginInfosChangedConnection;
    zetui::ui::AddAndRemoveKeyboardEventFilterNode keyboardFilter;
    AudioPluginManagerSettings& settings;
};

} // namespace zetaudiopluginhostui
