#include "dialog/PluginManagerDialog.h"

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/debug/DebugDatabase.h>

#include "dialog/PluginManagerIds.h"

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
    SetUpFolders();
    SetUpPluginList();
    SetOkButton(FindControl<Button>(ids::kOKButton));
    SetCancelButton(FindControl<Button>(ids::kCancelButton));
    SetUpFindStrip();
    SetUpPluginCommands();
    PopulateFolderList();
    PopulatePluginList(true, true);
}

PluginManagerDialog::~PluginManagerDialog()
{
    // A field that loses the focus tells of its text. It must do so while there is somebody to tell.
    UI_ArchivedDialog::UI_Show(false);
    settings.rescanExisting = rescanExistingCheckbox && rescanExistingCheckbox->IsChecked();
    if (plugins) {
        settings.sortColumn = plugins->HeaderRow().GetSortColumn();
        settings.sortAscending = plugins->HeaderRow().IsSortDirectionAscending();
    }
    ForgetListCallbacks();
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
    if (!zetcore::debug::DebugDatabase::Instance().IsOn("AudioPluginManager.ShowExternalCheckBox", false)) {
        separateProcessCheckbox->UI_Hide(true);
        // The window needs no room for a text that nobody sees.
        FitToTexts();
    }
}

void PluginManagerDialog::SetUpFolders()
{
    const auto remove = FindControl<Button>(ids::kRemoveDirectoryButton);
    folders = std::make_unique<FolderSection>(FindControl<controls::UI_MultiColumnTree>(ids::kDirectoryList),
                                              remove);
    if (folders->List())
        SetFolderListCallbacks();
    if (const auto add = FindControl<Button>(ids::kAddDirectoryButton))
        add->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnAddFolder));
    if (remove)
        remove->NotifyWhenChanged(BindMessageFunctionWeakly(this, &PluginManagerDialog::OnRemoveFolders));
    if (const auto defaults = FindControl<Button>(ids::kDefaultDirectoriesButton))
        defaults->NotifyWhenChanged(BindMessageFunctionWeakly(this, &PluginManagerDialog::OnDefaultFolders));
}

void PluginManagerDialog::SetFolderListCallbacks()
{
    controls::UI_MultiColumnTree& list = *folders->List();
    list.SetDrawCellOfRowCallback([this](zetui::pixmill::Pixmill* context, const RowPtr& row,
                                         int /*cellIndex*/,
                                         const RectF& cell) { DrawFolderCell(context, row, cell); });
    list.SetRowsSelectionChangedCallback([this] { OnFolderSelectionChanged(); });
    list.SetCellTextFunction(
        [this](const RowPtr& row, int /*cellIndex*/) { return folders->FolderOf(row.get()); });
    list.SetCellTooltipFunction(
        [this](const RowPtr& row, int /*cellIndex*/) { return folders->ReasonOf(row.get()); });
    list.SetCutTextFunction([this](const RowPtr& row, int /*cellIndex*/, float cellWidth) {
        return folders->GetCutText(row.get(), cellWidth);
    });
    list.SetDeleteCallback([this] { folders->RemoveSelectedFolders(); });
    directoriesChangedConnection =
        PluginModuleInfoManager::GetInstance()
            ->GetPluginTechnology(zetaudiofilterhost::TechnologyType::VST)
            ->GetDirectoriesChangedSignal()
            .Connect([this](const auto& technology) { OnPluginDirectoriesChanged(technology); });
}

void PluginManagerDialog::SetUpPluginList()
{
    const auto tree = FindControl<PluginMultiColumnTree>(ids::kPluginList);
    if (!tree)
        return;
    plugins = std::make_unique<PluginListView>(
        tree, GetSupplier(),
        PluginRowWidgets::Handlers{
            .enableChanged = BindMessageFunction(this, &PluginManagerDialog::OnEnableCheckboxChanged),
            .reloadPressed = BindMessageFunction(this, &PluginManagerDialog::OnReloadPlugin)});
    SetPluginListCallbacks();
    if (settings.sortColumn != 0) {
        plugins->HeaderRow().SetSortColumn(settings.sortColumn);
        plugins->HeaderRow().SetSortDirection(settings.sortAscending);
    }
    tree->SortTree();
    // Return is OK there. On the first button it would do what nobody has asked for.
    SetFirstFocusNode(tree);
}

void PluginManagerDialog::SetPluginListCallbacks()
{
    PluginMultiColumnTree& tree = plugins->Tree();
    tree.SetRowVisibilityChangedCallback([this](const RowPtr& row) { OnPluginRowVisibilityChanged(row); });
    tree.SetDrawCellOfRowCallback(
        [this](zetui::pixmill::Pixmill* context, const RowPtr& row, int cellIndex, const RectF& cell) {
            DrawCellOfRow(context, row, cellIndex, cell);
        });
    tree.SetCellSelectionChangedCallback([this] { OnCellSelectionChanged(); });
    tree.SetRowMenuFunction([this](const RowPtr& row) { return MakeRowMenu(row); });
    plugins->HeaderRow().SetColumnBestFitWidthCallback(
        [this](unsigned column) { return GetColumnBestFitWidth(column); });
    tree.SetCellSortDataFunction(
        [this](const RowPtr& row, int cellIndex) { return GetCellSortData(row, cellIndex); });
    tree.SetCellTextFunction([this](const RowPtr& row, int cellIndex) {
        return plugins->GetCellDescription(row.get(), cellIndex);
    });
    tree.SetCellControlFunction(
        [this](const RowPtr& row, int cellIndex) { return plugins->GetCellControl(row.get(), cellIndex); });
    tree.SetCellTooltipFunction(
        [this](const RowPtr& row, int cellIndex) { return plugins->GetCellTooltip(row.get(), cellIndex); });
    tree.SetCutTextFunction([this](const RowPtr& row, int cellIndex, float cellWidth) {
        return plugins->GetCutText(row.get(), cellIndex, cellWidth);
    });
    tree.SetRowDetailsFunction(
        [this](const RowPtr& row) { return plugins->GetRowDetails(row.get()); },
        Localizer::Get().LocalizeWide("$$$/AudioPluginManager/Details=Details"),
        Localizer::Get().LocalizeWide(
            "$$$/AudioPluginManager/DetailsPrompt=Select a plug-in to see its details."));
    pluginInfosChangedConnection =
        PluginModuleInfoManager::GetInstance()->GetPluginInfosChangedSignal().Connect(
            [this] { OnPluginInfosChanged(); });
}

void PluginManagerDialog::SetUpFindStrip()
{
    findStrip = std::make_unique<FindStrip>(FindControl<controls::UI_StaticText>(ids::kFindStaticText),
                                            FindControl<controls::UI_SearchBox>(ids::kFindTextEdit),
                                            GetRootView(), [this] { PopulatePluginList(false, true); });
    if (const auto& box = findStrip->Box()) {
        box->NotifyWhenChangedInteractively(
            BindMessageFunctionWeakly(this, &PluginManagerDialog::OnFindTextChangedInteractively));
        box->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnFindTextChanged));
        if (plugins)
            findBoxKeys = std::make_unique<FindBoxKeys>(box, &plugins->Tree());
    }
    // The checkbox decides, and not the switch, because its archive may hide it, too.
    if (!separateProcessCheckbox->UI_IsShown())
        findStrip->TakeRoomOf(*separateProcessCheckbox);
}

void PluginManagerDialog::SetUpPluginCommands()
{
    if (const auto update = FindControl<Button>(ids::kUpdateButton)) {
        update->NotifyWhenChanged(BindMessageFunctionWeakly(this, &PluginManagerDialog::OnScanForPlugins));
        scanShortcut = std::make_unique<ScanShortcut>(GetRootView(), update);
    }
    enableAllButton = FindControl<Button>(ids::kEnableAllButton);
    if (enableAllButton)
        enableAllButton->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnEnableAll));
    disableAllButton = FindControl<Button>(ids::kDisableAllButton);
    if (disableAllButton)
        disableAllButton->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnDisableAll));
}

void PluginManagerDialog::ForgetListCallbacks()
{
    if (plugins) {
        PluginMultiColumnTree& tree = plugins->Tree();
        tree.SetRowVisibilityChangedCallback({});
        tree.SetCellSelectionChangedCallback({});
        tree.SetDrawCellOfRowCallback({});
        tree.SetCellSortDataFunction({});
        tree.SetRowMenuFunction({});
        tree.SetCellTextFunction({});
        tree.SetCellTooltipFunction({});
        tree.SetRowDetailsFunction({});
        tree.SetCutTextFunction({});
        tree.SetNotice({});
        tree.SetCellControlFunction({});
        plugins->HeaderRow().SetColumnBestFitWidthCallback({});
    }
    if (const auto& list = folders ? folders->List() : nullptr) {
        list->SetRowsSelectionChangedCallback({});
        list->SetDrawCellOfRowCallback({});
        list->SetCellTextFunction({});
        list->SetCellTooltipFunction({});
        list->SetCutTextFunction({});
        list->SetDeleteCallback({});
    }
}

} // namespace zetaudiopluginhostui
