#include "dialog/find/FindShortcut.h"

#include <utility>

namespace zetaudiopluginhostui {

namespace ui = zetui::ui;

FindShortcut::FindShortcut(ui::UI_SubView* rootView,
                           zetui::utility::IntrusivePtr<zetui::controls::UI_SearchBox> searchBox)
    : root(rootView), findBox(std::move(searchBox)), registration(ui::UI_NodeManager::Get(false), this, false)
{}

bool FindShortcut::UI_DoPreKeyboardEvent(ui::UI_Node* /*target*/, const ui::KeyboardEvent& event)
{
    const bool isShortcut =
        event.GetOSCode() == 'F' && event.IsControlDown() && !event.IsShiftDown() && !event.IsAltDown();
    if (!isShortcut || !root || !root->UI_HasKeyboardFocus(true) || !findBox || !findBox->UI_IsShown())
        return false;
    findBox->UI_GainKeyboardFocus(ui::kFocusChangeProgram);
    return true;
}

} // namespace zetaudiopluginhostui
