#pragma once

#include <zetui/controls/UI_TextButton.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/nodes/UI_SubView.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetaudiopluginhostui {

/// While it lives, F5 and Ctrl+R press the scan button. Main thread.
class ScanShortcut : public zetui::ui::KeyboardEventFilter
{
  public:
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;

    /// The shortcut works while the focus is inside `root`. Neither is null.
    ScanShortcut(Ptr<zetui::ui::UI_SubView> root, Ptr<zetui::controls::UI_TextButton> scanButton);

    bool UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target, const zetui::ui::KeyboardEvent& event) override;

  private:
    Ptr<zetui::ui::UI_SubView> root;
    Ptr<zetui::controls::UI_TextButton> scan;
    zetui::ui::AddAndRemoveKeyboardEventFilterNode registration;
};

} // namespace zetaudiopluginhostui
