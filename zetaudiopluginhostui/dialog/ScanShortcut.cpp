#include "dialog/ScanShortcut.h"

#include <utility>

namespace zetaudiopluginhostui {

namespace ui = zetui::ui;

ScanShortcut::ScanShortcut(Ptr<ui::UI_SubView> rootView, Ptr<zetui::controls::UI_TextButton> scanButton)
    : root(std::move(rootView)), scan(std::move(scanButton)),
      registration(ui::UI_NodeManager::Get(false), this, false)
{}

bool ScanShortcut::UI_DoPreKeyboardEvent(ui::UI_Node* /*target*/, const ui::KeyboardEvent& event)
{
    const bool controlR =
        event.GetOSCode() == 'R' && event.IsControlDown() && !event.IsShiftDown() && !event.IsAltDown();
    if (!(controlR || event.IsPlain(ui::kF5Key)) || !root->UI_HasKeyboardFocus(true))
        return false;
    // A key that is kept down scans once.
    if (!event.IsRepeated())
        scan->Click();
    return true;
}

} // namespace zetaudiopluginhostui
