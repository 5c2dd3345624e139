// The widgets in the plug-in list's visible rows.
#include <cmath>

#include <zetcore/config/Localizer.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/controls/ButtonComponents.h>
#include <zetui/skins/ListSizes.h>

#include "dialog/PluginListText.h"
#include "dialog/PluginManagerDialog.h"

namespace zetaudiopluginhostui {

namespace controls = zetui::controls;
using zetcore::config::Localizer;
using zetui::skins::GetListSizes;
using zetui::ui::BindMessageFunction;
using zetui::utility::MakeIntrusive;

namespace {

constexpr float checkboxWidth = 200;
constexpr float checkboxHeight = 14;

std::wstring ReloadText()
{
    return Localizer::Get().LocalizeWide("$$$/AudioPluginManager/Reload=Reload");
}

/// The top of something that is centred in a row.
float CenteredTop(float rowHeight, float height)
{
    return std::ceil((rowHeight - height) / 2);
}

zetui::utility::IntrusivePtr<zetui::ui::UI_SubView> RequireCellView(controls::UI_MultiColumnTreeRow& row,
                                                                    int cell)
{
    auto view = row.GetCellView(cell);
    if (!view)
        zetcore::utility::DoThrowNullPtrException("UI_SubView");
    return view;
}

} // namespace

void PluginManagerDialog::OnPluginRowVisibilityChanged(const RowPtr& row)
{
    if (!row)
        zetcore::utility::DoThrowNullPtrException("UI_MultiColumnTreeRow");
    if (!pluginList->IsRowVisible(row.get())) {
        checkboxOfRow.erase(row.get());
        reloadButtonOfRow.erase(row.get());
        return;
    }
    const PluginListEntry* const entry = FindEntry(row.get());
    if (!entry)
        return;
    AddEnableCheckbox(row, *entry);
    if (!entry->info || zetcore::debug::DebugDatabase::Instance().IsOn("AlwaysShowPlugInRescanButton", false))
        AddReloadButton(row, *entry);
}

void PluginManagerDialog::AddEnableCheckbox(const RowPtr& row, const PluginListEntry& entry)
{
    const auto checkbox = MakeIntrusive<Checkbox>();
    checkboxOfRow.insert_or_assign(row.get(), checkbox);
    checkbox->UI_SetLocalRectF({GetListSizes().checkboxInset,
                                CenteredTop(pluginList->GetRowHeight(), checkboxHeight), checkboxWidth,
                                checkboxHeight});
    RequireCellView(*row, kEnabledCell)->InsertChild(checkbox);
    checkbox->SetWantsKeyboardFocus(true);
    checkbox->UI_SetAccessibleName(Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/EnablePlugin=Enable @0", {GetCellText(kColumnName, entry)}));
    checkbox->UI_Show(true);
    checkbox->UI_SetEnabled(entry.info != nullptr);
    checkbox->SetChecked(entry.info && entry.info->IsEnabled());
    checkbox->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnEnableCheckboxChanged));
}

void PluginManagerDialog::AddReloadButton(const RowPtr& row, const PluginListEntry& entry)
{
    const auto button = MakeIntrusive<Button>();
    button->SetText(ReloadText());
    const float width = GetReloadButtonWidth();
    const float height = GetListSizes().ButtonHeight(pluginList->GetRowHeight());
    button->UI_SetLocalRectF(
        {RequirePluginHeader().GetColumnWidth(kColumnStatus) - width - GetListSizes().buttonInset,
         CenteredTop(pluginList->GetRowHeight(), height), width, height});
    reloadButtonOfRow.insert_or_assign(row.get(), button);
    RequireCellView(*row, kStatusCell)->InsertChild(button);
    button->SetWantsKeyboardFocus(true);
    button->UI_SetAccessibleName(Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/ReloadPlugin=Reload @0", {GetCellText(kColumnName, entry)}));
    button->NotifyWhenChanged(BindMessageFunction(this, &PluginManagerDialog::OnReloadPlugin));
    button->SetButtonComponents(controls::ButtonComponents(0, false));
    button->UI_Show(true);
}

float PluginManagerDialog::GetReloadButtonWidth() const
{
    return Button::UI_GetRecommendedSize(GetSupplier(), ReloadText(),
                                         controls::UI_ControlView::DefaultTextSize(),
                                         controls::ButtonComponents(1, false))
        .first;
}

} // namespace zetaudiopluginhostui
