#include "dialog/find/FindBoxKeys.h"

#include <utility>

namespace zetaudiopluginhostui {

namespace ui = zetui::ui;

FindBoxKeys::FindBoxKeys(Ptr<zetui::controls::UI_SearchBox> searchBox,
                         Ptr<zetui::controls::UI_MultiColumnTree> pluginList)
    : findBox(std::move(searchBox)), list(std::move(pluginList)),
      registration(ui::UI_NodeManager::Get(false), this, false)
{}

bool FindBoxKeys::UI_DoPreKeyboardEvent(ui::UI_Node* target, const ui::KeyboardEvent& event)
{
    if (target != findBox.get() || !(event.IsPlain(ui::kReturnKey) || event.IsPlain(ui::kDownKey)))
        return false;
    list->EnterRows();
    return true;
}

} // namespace zetaudiopluginhostui
