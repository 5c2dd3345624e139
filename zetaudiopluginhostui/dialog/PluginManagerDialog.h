#pragma once

#include <map>
#include <memory>
#include <string>

#include <zetaudiofilterhost/PluginTechnology.h>
#include <zetaudiopluginhostui/AudioPluginManagerSettings.h>
#include <zetcore/signals/ScopedConnection.h>
#include <zetui/archiveddialog/UI_ArchivedDialog.h>
#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_Message.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/tree/UI_MultiColumnTree.h>

#include "dialog/BoxView.h"
#include "dialog/FindShortcut.h"
#include "dialog/PluginListContent.h"
#include "dialog/PluginListEntry.h"
#include "dialog/PluginMultiColumnTree.h"

namespace zetaudiopluginhostui {

/// The modal "Audio Plug-In Manager". It shows and changes the registry and the list of banned plug-ins at
/// once; whoever runs it saves or reloads them afterwards. Main thread.
class PluginManagerDialog : public zetui::ui::UI_ArchivedDialog
{
  public:
    /// Builds the dialog from its layout archive and fills its lists. Supplier, resources and settings are
    /// not owned; the settings are written back by the destructor. Throws `archive_error`, and the
    /// invalid-type-conversion error for an archive without one of the two option checkboxes.
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

    // Construction. A control that the archive lacks, or has of another class, is passed over with all that
    // is done to it; only the two option checkboxes are required. Handlers that may be called when the dialog
    // is gone, because somebody else holds their control or because they run a modal dialog of their own, are
    // bound through its weak key.
    Ptr<zetui::ui::UI_Node> CreateArchivedNode(const std::string& className);
    void SetUpOptions();
    void SetUpFolderList();
    void SetUpFolderCommands(const Ptr<Button>& addDirectoryButton);
    void SetUpPluginList();
    void AppendPluginColumns();
    void SetPluginListCallbacks();
    void SetUpFindBox();
    /// Gives the find controls the room of the hidden checkbox. Decided by the checkbox, which its archive
    /// may hide as well, and not by the switch.
    void ReflowWithoutSeparateProcess();
    void SetUpPluginCommands();
    /// Stretches the label up to the find box, whatever the layout has put between the two: its text stands
    /// at its right end, and its mnemonic goes to the box.
    void LeadLabelToFindBox();

    // The plug-in list.
    /// Reads the registry and the banned list and shows what the find box lets through. A missing list is
    /// passed over: what else there is to do is done.
    void PopulatePluginList(bool resizeColumns, bool scrollToTop);
    /// With what has been read.
    void FillPluginList(bool resizeColumns, bool scrollToTop);
    void FitPluginColumns();
    void SetAllPluginsEnabled(bool enabled);
    /// The entry that a row of a fill carries. Null for every other row: it gets no widgets and has empty
    /// texts.
    const PluginListEntry* FindEntry(const Row* row) const;
    /// The id of the column that shows the cells of this index.
    unsigned GetColumnOfCell(int cellIndex) const;
    zetui::controls::UI_MultiColumnTreeHeaderRow& RequirePluginHeader() const;
    std::wstring GetCellSortData(const RowPtr& row, int cellIndex) const;
    std::wstring GetCellDescription(const RowPtr& row, int cellIndex) const;
    std::wstring GetCellTooltip(const RowPtr& row, int cellIndex) const;
    void DrawCellOfRow(zetui::pixmill::Pixmill* context, const RowPtr& row, int cellIndex, const RectF& cell);
    float GetColumnBestFitWidth(unsigned column) const;
    float GetReloadButtonWidth() const;
    void OnCellSelectionChanged();
    void OnEnableCheckboxChanged(ButtonChanged* message);
    void OnPluginInfosChanged();
    void OnEnableAll(ButtonChanged* message);
    void OnDisableAll(ButtonChanged* message);
    void OnFindTextChanged(zetui::ui::UI_ControlChangedMessage* message);
    void OnFindTextChangedInteractively(zetui::ui::UI_InteractiveControlChangedMessage* message);
    void ApplyFindText();

    // The widgets of visible rows. Both take part in the keyboard's tour of the list (`SetWantsKeyboardFocus`
    // is the toolkit's option for that), and are named after their plug-in for screen readers.
    /// Disabled and unchecked for a banned plug-in: there is no record to switch.
    void AddEnableCheckbox(const RowPtr& row, const PluginListEntry& entry);
    void AddReloadButton(const RowPtr& row, const PluginListEntry& entry);

    // Folders.
    void PopulateFolderList();
    void OnPluginDirectoriesChanged(const std::shared_ptr<zetaudiofilterhost::PluginTechnology>& technology);
    void DrawFolderCell(zetui::pixmill::Pixmill* context, const RowPtr& row, const RectF& cell);
    std::wstring GetFolder(const Row* row) const;
    void OnFolderSelectionChanged();
    void OnAddFolder(ButtonChanged* message);
    void OnRemoveFolders(ButtonChanged* message);
    void OnDefaultFolders(ButtonChanged* message);

    // Scans.
    void OnScanForPlugins(ButtonChanged* message);
    void OnReloadPlugin(ButtonChanged* message);
    /// False when the preferences folder does not let it.
    bool SaveBannedList() const;
    bool SaveRegistry() const;
    bool RescanPlugin(const zetaudiofilterhost::PluginLocator& locator) const;

    zetcore::signals::ScopedConnection directoriesChangedConnection, pluginInfosChangedConnection;
    /// By row, as long as the row is in its list.
    std::map<const Row*, std::wstring> folderOfRow;
    PluginListContent plugins;
    /// Visible rows only.
    std::map<const Row*, Ptr<Checkbox>> checkboxOfRow;
    std::map<const Row*, Ptr<Button>> reloadButtonOfRow;
    Ptr<BoxView> pluginTreeSection;
    Ptr<PluginMultiColumnTree> pluginList;
    Ptr<zetui::controls::UI_MultiColumnTree> directoryList;
    Ptr<Button> removeDirectoryButton, enableAllButton, disableAllButton;
    Ptr<Checkbox> rescanExistingCheckbox, separateProcessCheckbox;
    Ptr<zetui::controls::UI_StaticText> findStaticText;
    Ptr<zetui::controls::UI_SearchBox> findTextEdit;
    /// The find text that the list was last filled with.
    std::wstring findText;
    zetui::ui::AddAndRemoveKeyboardEventFilterNode keyboardFilter;
    std::unique_ptr<FindShortcut> findShortcut;
    AudioPluginManagerSettings& settings;
};

} // namespace zetaudiopluginhostui
