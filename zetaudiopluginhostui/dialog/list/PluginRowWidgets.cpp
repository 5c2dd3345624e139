#include "dialog/list/PluginRowWidgets.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <zetcore/config/Localizer.h>
#include <zetcore/config/ThrowError.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/controls/ButtonComponents.h>
#include <zetui/skins/ListSizes.h>

#include "dialog/list/PluginListText.h"

namespace zetaudiopluginhostui {

namespace controls = zetui::controls;
using zetcore::config::Localizer;
using zetui::skins::GetListSizes;
using zetui::utility::MakeIntrusive;

namespace {

constexpr float checkboxWidth = 200;
constexpr float checkboxHeight = 14;

std::wstring ReloadText()
{
    return Localizer::Get().LocalizeWide("$$$/AudioPluginManager/Reload=Reload");
}

/// The top of a control that lies in the middle of a row.
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

/// The row that the map has for the control, which must be of the map's class.
template<typename Control>
const controls::UI_MultiColumnTreeRow*
RowOf(const zetui::ui::UI_Node* node,
      const std::map<const controls::UI_MultiColumnTreeRow*, zetui::utility::IntrusivePtr<Control>>& map)
{
    const auto* const control = dynamic_cast<const Control*>(node);
    if (!control)
        zetcore::config::ThrowInvalidTypeConversion();
    const auto found = std::find_if(map.begin(), map.end(),
                                    [control](const auto& each) { return each.second.get() == control; });
    return found == map.end() ? nullptr : found->first;
}

} // namespace

PluginRowWidgets::PluginRowWidgets(const controls::UI_MultiColumnTree& pluginTree,
                                   const zetui::pixmill::SupplierInterface* drawingSupplier,
                                   Handlers messageHandlers)
    : tree(pluginTree), supplier(drawingSupplier), handlers(std::move(messageHandlers))
{}

controls::CellControl PluginRowWidgets::ControlOf(const PluginListEntry& entry, int cellIndex)
{
    using Kind = controls::CellControl::Kind;
    if (cellIndex == kEnabledCell) {
        // A banned plug-in has no record that could be switched.
        const bool enabled = entry.info != nullptr;
        return {Kind::Checkbox, enabled, enabled && entry.info->IsEnabled()};
    }
    const bool reload =
        !entry.info || zetcore::debug::DebugDatabase::Instance().IsOn("AlwaysShowPlugInRescanButton", false);
    if (cellIndex == kStatusCell && reload)
        return {Kind::Button, true, false};
    return {};
}

void PluginRowWidgets::Add(Row& row, const PluginListEntry& entry)
{
    AddEnableCheckbox(row, entry);
    if (ControlOf(entry, kStatusCell).kind == controls::CellControl::Kind::Button)
        AddReloadButton(row, entry);
}

void PluginRowWidgets::AddEnableCheckbox(Row& row, const PluginListEntry& entry)
{
    const auto checkbox = MakeIntrusive<controls::UI_Checkbox>();
    checkboxOfRow.insert_or_assign(&row, checkbox);
    checkbox->UI_SetLocalRectF({GetListSizes().checkboxInset,
                                CenteredTop(tree.GetRowHeight(), checkboxHeight), checkboxWidth,
                                checkboxHeight});
    RequireCellView(row, kEnabledCell)->InsertChild(checkbox);
    checkbox->SetWantsKeyboardFocus(true);
    checkbox->UI_SetAccessibleName(Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/EnablePlugin=Enable @0", {GetCellText(kColumnName, entry)}));
    checkbox->UI_Show(true);
    const controls::CellControl control = ControlOf(entry, kEnabledCell);
    checkbox->UI_SetEnabled(control.enabled);
    checkbox->SetChecked(control.checked);
    checkbox->NotifyWhenChanged(handlers.enableChanged);
}

void PluginRowWidgets::AddReloadButton(Row& row, const PluginListEntry& entry)
{
    const auto button = MakeIntrusive<controls::UI_TextButton>();
    button->SetText(ReloadText());
    const float width = ReloadButtonWidth();
    const float height = GetListSizes().ButtonHeight(tree.GetRowHeight());
    button->UI_SetLocalRectF(
        {tree.GetHeaderRow()->GetColumnWidth(kColumnStatus) - width - GetListSizes().buttonInset,
         CenteredTop(tree.GetRowHeight(), height), width, height});
    reloadButtonOfRow.insert_or_assign(&row, button);
    RequireCellView(row, kStatusCell)->InsertChild(button);
    button->SetWantsKeyboardFocus(true);
    button->UI_SetAccessibleName(Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/ReloadPlugin=Reload @0", {GetCellText(kColumnName, entry)}));
    button->NotifyWhenChanged(handlers.reloadPressed);
    button->SetButtonComponents(controls::ButtonComponents(0, false));
    button->UI_Show(true);
}

void PluginRowWidgets::ShowEnabled(const Row& row, bool enabled)
{
    if (const auto checkbox = checkboxOfRow.find(&row); checkbox != checkboxOfRow.end())
        checkbox->second->SetChecked(enabled);
}

void PluginRowWidgets::Remove(const Row& row)
{
    checkboxOfRow.erase(&row);
    reloadButtonOfRow.erase(&row);
}

void PluginRowWidgets::RemoveAll()
{
    checkboxOfRow.clear();
    reloadButtonOfRow.clear();
}

const PluginRowWidgets::Row* PluginRowWidgets::RowOfCheckbox(const zetui::ui::UI_Node* control) const
{
    return RowOf(control, checkboxOfRow);
}

const PluginRowWidgets::Row* PluginRowWidgets::RowOfReloadButton(const zetui::ui::UI_Node* control) const
{
    return RowOf(control, reloadButtonOfRow);
}

std::optional<float> PluginRowWidgets::ReloadButtonLeft(const Row& row) const
{
    const auto button = reloadButtonOfRow.find(&row);
    if (button == reloadButtonOfRow.end())
        return std::nullopt;
    return button->second->UI_GetLocalRectF(true).left;
}

float PluginRowWidgets::ReloadButtonWidth() const
{
    return controls::UI_TextButton::UI_GetRecommendedSize(supplier, ReloadText(),
                                                          controls::UI_ControlView::DefaultTextSize(),
                                                          controls::ButtonComponents(1, false))
        .first;
}

} // namespace zetaudiopluginhostui
