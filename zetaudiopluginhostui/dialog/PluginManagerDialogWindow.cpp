// Size, keyboard and focus of the manager dialog.
#include <string>

#include <zetcore/config/Localizer.h>

#include "dialog/PluginManagerDialog.h"
#include "dialog/find/ToolStripFit.h"

namespace zetaudiopluginhostui {

using zetcore::config::Localizer;

void PluginManagerDialog::UI_SizeChanged(const RectF& bounds)
{
    if (findStrip)
        findStrip->LeadLabelToBox();
    // A control that is hidden would give the focus to whatever comes next, which may be any button.
    const Ptr<zetui::ui::UI_Node> focused(GetRootView()->UI_HasKeyboardFocus(true)
                                              ? zetui::ui::UI_NodeManager::Get(false)->GetFocusNode()
                                              : nullptr);
    UI_ArchivedDialog::UI_SizeChanged(bounds);
    if (pluginTreeSection) {
        const RectF section = pluginTreeSection->UI_GetLocalRectF(false);
        for (const auto& button : {enableAllButton, disableAllButton}) {
            if (!button)
                continue;
            const RectF onScreen = button->UI_LocalToGlobalF(button->UI_GetLocalRectF(false));
            button->UI_Show(EndsInside(pluginTreeSection->UI_GlobalToLocalF(onScreen), section));
        }
    }
    const zetui::ui::UI_SubView* const strip =
        separateProcessCheckbox ? separateProcessCheckbox->UI_GetParentNode() : nullptr;
    if (strip && findStrip)
        findStrip->Fit(*strip);
    if (focused && !focused->UI_IsShown() && plugins)
        plugins->Tree().UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    TellOfUnseenFilter();
}

void PluginManagerDialog::TellOfUnseenFilter()
{
    if (!plugins)
        return;
    if (!findStrip || !findStrip->NarrowsUnseen()) {
        plugins->Tree().SetNotice({});
        return;
    }
    const Localizer& texts = Localizer::Get();
    plugins->Tree().SetNotice(texts.LocalizeWide("$$$/AudioPluginManager/ShownOf=@0 of @1 shown",
                                                 {std::to_wstring(plugins->Tree().GetRowCount()),
                                                  std::to_wstring(plugins->CountOfAll())}),
                              texts.LocalizeWide("$$$/AudioPluginManager/ClearFilter=Clear Filter"),
                              [this] { findStrip->Clear(); });
}

bool PluginManagerDialog::UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target,
                                                const zetui::ui::KeyboardEvent& event)
{
    if (!plugins || !plugins->Tree().UI_HasKeyboardFocus(false) || event.GetOSCode() != zetui::ui::kTabKey)
        return false;
    return plugins->Tree().UI_DoKeyboardEvent(target, event);
}

PluginManagerDialog::Response PluginManagerDialog::RunModal()
{
    const auto firstFocusNode = GetFirstFocusNode();
    if (firstFocusNode)
        firstFocusNode->UI_GainKeyboardFocus(zetui::ui::kFocusChangeProgram);
    return UI_ArchivedDialog::RunModal();
}

} // namespace zetaudiopluginhostui
