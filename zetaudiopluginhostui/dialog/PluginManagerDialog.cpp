#include "dialog/PluginManagerDialog.h"

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/config/ThrowError.h>

#include "dialog/ColumnWidths.h"
#include "dialog/PluginListText.h"
#include "dialog/PluginManagerIds.h"
#include "module/DebugSwitch.h"

namespace zetaudiopluginhostui {

namespace controls = zetui::controls;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::config::Localizer;
using zetui::ui::BindMessageFunction;
using zetui::ui::BindMessageFunctionWeakly;
using zetui::utility::MakeIntrusive;

namespace {

constexpr float minimumWidth = 400;
constexpr float minimumHeight = 400;

} // namespace

PluginManagerDialog::PluginManagerDialog(const zetui::pixmill::SupplierInterface* supplier,
                                         const zetui::utility::ResourceManager* resources,
                                         AudioPluginManagerSettings& rememberedSettings, HWND parent)
    : UI_ArchivedDialog(
          supplier, resources, ids::kArchiveName,
          Localizer::Get().LocalizeWide("$$$/AudioPluginManager/DialogTitle=Audio Plug-In Manager"),
          zetui::ui::WindowVariant(parent), true, true, zetui::ui::PointF(),
          [this](const std::string& className) { return CreateArchivedNode(className); }, false, {}),
      keyboardFilter(zetui::ui::UI_NodeManager::Get(false), this, false), settings(rememberedSettings)
{
    SetMinimumSize(minimumWidth, minimumHeight);
    SetUpOptions();
    pluginTreeSection = FindControl<BoxView>(ids::kPluginTreeSection);
    const auto addDirectoryButton = FindControl<Button>(ids::kAddDirectoryButton);
    removeDirectoryButton = FindControl<Button>(ids::kRemoveDirectoryButton);
    SetUpFolderList();
    SetUpFolderCommands(addDirectoryButton);
    SetUpPluginList();
    SetOkButton(FindControl<Button>(ids::kOKButton));
    SetCancelButton(FindControl<Button>(ids::kCancelButton));
    findStaticText = FindControl<controls::UI_StaticText>(ids::kFindStaticText);
    SetUpFindBox();
    SetUpPluginCommands();
    PopulateFolderList();
    PopulatePluginList(true, true);
}

PluginManagerDialog::~PluginManagerDialog()
{
    // A field that loses the focus tells of its text: now, while there is somebody to tell.
    UI_ArchivedDialog::UI_Show(false);
    settings.rescanExisting = rescanExistingCheckbox && rescanExistingCheckbox->IsChecked();
    if (const auto* const header = pluginList ? pluginList->GetHeaderRow() : nullptr) {
        settings.sortColumn = header->GetSortColumn();
        settings.sortAscending = header->IsSortDirectionAscending();
        // The tree goes with the base, when what its callbacks need is gone.
        pluginList->SetRowVisibilityChangedCallback({});
        pluginList->SetCellSelectionChangedCallback({});
        pluginList->SetDrawCellOfRowCallback({});
        pluginList->SetCellSortDataFunction({});
        pluginList->SetCellTextFunction({});
        pluginList->SetCellTooltipFunction({});
    }
    if (directoryList) {
        directoryList->SetRowsSelectionChangedCallback({});
        directoryList->SetDrawCellOfRowCallback({});
        directoryList->SetCellTextFunction({});
    }
}

template<typename Control>
PluginManagerDialog::Ptr<Control> PluginManagerDialog::FindControl(const char* id) const
{
    return dynamic_cast<Control*>(GetNodeForID(id).get());
}

template<typename Control>
PluginManagerDialog::Ptr<Control> PluginManagerDialog::RequireControl(const char* id) const
{
    auto control = FindControl<Control>(id);
    if (!control)
        zetcore::config::ThrowInvalidTypeConversion();
    return control;
}

PluginManagerDialog::Ptr<zetui::ui::UI_Node>
PluginManagerDialog::CreateArchivedNode(const std::string& className)
{
    if (className == "BoxView")
        return MakeIntrusive<BoxView>();
    if (className == "PluginMultiColumnTree") {
        const auto tree = MakeIntrusive<PluginMultiColumnTree>();
        tree->Init({});
        return tree;
    }
    if (className == "UI_SearchBox")
        return MakeIntrusive<controls::UI_SearchBox>(false, false);
    return nullptr;
}

void PluginManagerDialog::SetUpOptions()
{
    rescanExistingCheckbox = RequireControl<Checkbox>(ids::kRescanExisting);
    rescanExistingCheckbox->SetValue(settings.rescanExisting ? Checkbox::kChecked : Checkbox::kUnchecked);
    separateProcessCheckbox = RequireControl<Checkbox>(ids::kSeparateProcess);
    separateProcessCheckbox->SetValue(Checkbox::kChecked);
    if (!IsDebugSwitchOn("AudioPluginManager.ShowExternalCheckBox", "false")) {
        separateProcessCheckbox->UI_Hide(true);
        // The window needs no room for a text that nobody sees.
        FitToTexts();
    }
}

void PluginManagerDialog::SetUpFolderList()
{
    directoryList = FindControl<controls::UI_MultiColumnTree>(ids::kDirectoryList);
    if (!directoryList)
        return;
    directoryList->SetAllowChildren(false);
    directoryList->SetIndicateFocus(true);
    directoryList->SetSupportNoneSelected(true);
    directoryList->SetSupportDeselectAllOnEmptyTreeClick(true);
    directoryList->SetSupportMultipleSelections(true);
    directoryList->SetWantsKeyboardFocus(true);
    directoryList->SetSupportNonArrowKeysToSelectRow(false);
    directoriesChangedConnection =
        PluginModuleInfoManager::GetInstance()
            ->GetPluginTechnology(zetaudiofilterhost::TechnologyType::VST)
            ->GetDirectoriesChangedSignal()
            .Connect([this](const auto& technology) { OnPluginDirectoriesChanged(technology); });
    directoryList->SetDrawCellOfRowCallback(
        [this](zetui::pixmill::Pixmill* context, const RowPtr& row, int /*cellIndex*/, const RectF& cell) {
            DrawFolderCell(context, row, cell);
        });
    directoryList->SetRowsSelectionChangedCallback([this] { OnFolderSelectionChanged(); });
    directoryList->SetCellTextFunction(
        [this](const RowPtr& row, int /*cellIndex*/) { return GetFolder(row.get()); });
    directoryList->UI_SetAccessibleName(
        Localizer::Get().LocalizeWide("$$$/PluginManager/Dialog/VSTPluginFolders=VST Plug-In Folders:"));
    directoryList->SetEmptyText(Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/NoFolders=No folders. Add those that hold your plug-ins."));
    directoryList->SetNumberOfColumns(1);
    constexpr float roomAtTheRight = 12;
    directoryList->SetColumnWidth(0, directoryList->GetContentViewWidth() - roomAtTheRight);
}

void PluginManagerDialog::SetUpFolderCommands(const Ptr<Button>& addDirectoryButton)
{
    if (addDirectoryButton)
        addDirectoryButton->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnAddFolder));
    if (removeDirectoryButton) {
        removeDirectoryButton->NotifyWhenChanged(
            BindMessageFunctionWeakly(this, &PluginManagerDialog::OnRemoveFolders));
        removeDirectoryButton->UI_SetDisabled(true);
    }
    if (const auto defaults = FindControl<Button>(ids::kDefaultDirectoriesButton))
        defaults->NotifyWhenChanged(BindMessageFunctionWeakly(this, &PluginManagerDialog::OnDefaultFolders));
}

void PluginManagerDialog::SetUpPluginList()
{
    pluginList = FindControl<PluginMultiColumnTree>(ids::kPluginList);
    if (!pluginList)
        return;
    pluginList->SetAllowChildren(false);
    pluginList->SetIndicateFocus(false);
    pluginList->SetSupportNoneSelected(true);
    pluginList->SetSupportDeselectAllOnEmptyTreeClick(true);
    pluginList->SetSupportMultipleSelections(false);
    pluginList->SetWantsKeyboardFocus(true);
    pluginList->SetSupportNonArrowKeysToSelectRow(false);
    pluginList->SetNumberOfColumns(0);
    pluginList->SetSupportUserSelectableRows(true);
    pluginList->SetSupportUserSelectableCells(true);
    pluginList->UI_SetAccessibleName(
        Localizer::Get().LocalizeWide("$$$/PluginManager/Dialog/AvailablePlugins=Available Plug-Ins:"));
    AppendPluginColumns();
    SetPluginListCallbacks();
    if (settings.sortColumn != 0) {
        RequirePluginHeader().SetSortColumn(settings.sortColumn);
        RequirePluginHeader().SetSortDirection(settings.sortAscending);
    }
    pluginList->SortTree();
}

void PluginManagerDialog::AppendPluginColumns()
{
    const auto header = MakeIntrusive<controls::UI_MultiColumnTreeHeaderRow>(pluginList.get());
    for (const PluginColumnSpec& column : PluginColumns())
        header->AppendColumn(Localizer::Get().LocalizeWide(column.titleKey), column.id);
    for (const PluginColumnSpec& column : PluginColumns())
        header->SetColumnWidth(column.id, column.width);
    header->SetLastColumnTakesFreeWidth(true);
    // The widgets of a row are in the cells of these.
    header->SetColumnKeepsPlace(kColumnEnabled, true);
    header->SetColumnKeepsPlace(kColumnStatus, true);
}

void PluginManagerDialog::SetPluginListCallbacks()
{
    pluginList->SetRowVisibilityChangedCallback(
        [this](const RowPtr& row) { OnPluginRowVisibilityChanged(row); });
    pluginInfosChangedConnection =
        PluginModuleInfoManager::GetInstance()->GetPluginInfosChangedSignal().Connect(
            [this] { OnPluginInfosChanged(); });
    pluginList->SetDrawCellOfRowCallback(
        [this](zetui::pixmill::Pixmill* context, const RowPtr& row, int cellIndex, const RectF& cell) {
            DrawCellOfRow(context, row, cellIndex, cell);
        });
    pluginList->SetCellSelectionChangedCallback([this] { OnCellSelectionChanged(); });
    RequirePluginHeader().SetColumnBestFitWidthCallback(
        [this](unsigned column) { return GetColumnBestFitWidth(column); });
    pluginList->SetCellSortDataFunction(
        [this](const RowPtr& row, int cellIndex) { return GetCellSortData(row, cellIndex); });
    pluginList->SetCellTextFunction(
        [this](const RowPtr& row, int cellIndex) { return GetCellDescription(row, cellIndex); });
    pluginList->SetCellTooltipFunction(
        [this](const RowPtr& row, int cellIndex) { return GetCellTooltip(row, cellIndex); });
}

void PluginManagerDialog::SetUpFindBox()
{
    findTextEdit = FindControl<controls::UI_SearchBox>(ids::kFindTextEdit);
    if (!findTextEdit)
        return;
    const std::wstring prompt =
        Localizer::Get().LocalizeWide("$$$/AudioPluginManager/FindPrompt=Filter plug-ins");
    findTextEdit->SetPrompt(prompt);
    findTextEdit->UI_SetAccessibleName(prompt);
    if (findStaticText)
        findStaticText->SetBuddy(findTextEdit.get());
    findShortcut = std::make_unique<FindShortcut>(GetRootView(), findTextEdit);
    findText = findTextEdit->GetValue();
    findTextEdit->NotifyWhenChangedInteractively(
        BindMessageFunctionWeakly(this, &PluginManagerDialog::OnFindTextChangedInteractively));
    findTextEdit->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnFindTextChanged));
    if (!separateProcessCheckbox->UI_IsShown())
        ReflowWithoutSeparateProcess();
}

void PluginManagerDialog::ReflowWithoutSeparateProcess()
{
    const RectF checkbox = separateProcessCheckbox->UI_GetLocalRectF(true);
    if (zetui::ui::UI_SubView* const strip = separateProcessCheckbox->UI_GetParentNode()) {
        RectF frame = strip->UI_GetLocalRectF(true);
        frame.width -= checkbox.width;
        strip->UI_SetLocalRectF(frame);
    }
    if (findStaticText) {
        // The checkbox's place is one in its own strip; the label's, one in the strip around that.
        RectF frame = findStaticText->UI_GetLocalRectF(true);
        frame.left = checkbox.left;
        findStaticText->UI_SetLocalRectF(frame);
    }
    RectF frame = findTextEdit->UI_GetLocalRectF(true);
    frame.left -= checkbox.width;
    frame.width += checkbox.width;
    findTextEdit->UI_SetLocalRectF(frame);
}

void PluginManagerDialog::SetUpPluginCommands()
{
    if (const auto update = FindControl<Button>(ids::kUpdateButton))
        update->NotifyWhenChanged(BindMessageFunctionWeakly(this, &PluginManagerDialog::OnScanForPlugins));
    enableAllButton = FindControl<Button>(ids::kEnableAllButton);
    if (enableAllButton)
        enableAllButton->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnEnableAll));
    disableAllButton = FindControl<Button>(ids::kDisableAllButton);
    if (disableAllButton)
        disableAllButton->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnDisableAll));
}

} // namespace zetaudiopluginhostui
