#pragma once

#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetaudiopluginhostui {

/// While it lives, Ctrl+F moves the keyboard focus to the find box if the box is shown. Main thread.
class FindShortcut : public zetui::ui::KeyboardEventFilter
{
  public:
    /// The shortcut works while the focus is inside `root`.
    FindShortcut(zetui::ui::UI_SubView* root,
                 zetui::utility::IntrusivePtr<zetui::controls::UI_SearchBox> findBox);

    bool UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target, const zetui::ui::KeyboardEvent& event) override;

  private:
    zetui::utility::IntrusivePtr<zetui::ui::UI_SubView> root;
    zetui::utility::IntrusivePtr<zetui::controls::UI_SearchBox> findBox;
    zetui::ui::AddAndRemoveKeyboardEventFilterNode registration;
};

} // namespace zetaudiopluginhostui
