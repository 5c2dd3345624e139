#pragma once

#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetaudiopluginhostui {

/// Ctrl+F goes to the find box, as long as it shows. Registered for as long as it lives. Main thread.
class FindShortcut : public zetui::ui::KeyboardEventFilter
{
  public:
    /// `root` holds all that the shortcut works from.
    FindShortcut(zetui::ui::UI_SubView* root,
                 zetui::utility::IntrusivePtr<zetui::controls::UI_SearchBox> findBox);

    bool UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target, const zetui::ui::KeyboardEvent& event) override;

  private:
    zetui::utility::IntrusivePtr<zetui::ui::UI_SubView> root;
    zetui::utility::IntrusivePtr<zetui::controls::UI_SearchBox> findBox;
    zetui::ui::AddAndRemoveKeyboardEventFilterNode registration;
};

} // namespace zetaudiopluginhostui
