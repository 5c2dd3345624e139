// Size, keyboard and focus of the manager dialog.
#include "dialog/PluginManagerDialog.h"
#include "dialog/find/ToolStripFit.h"

namespace zetaudiopluginhostui {

namespace {

constexpr int tabKey = 9;

} // namespace

void PluginManagerDialog::UI_SizeChanged(const RectF& bounds)
{
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
}

bool PluginManagerDialog::UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target,
                                                const zetui::ui::KeyboardEvent& event)
{
    if (!plugins || !plugins->Tree().UI_HasKeyboardFocus(false) || event.GetOSCode() != tabKey)
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
