#pragma once

#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_NodeManager.h>
#include <zetui/tree/UI_MultiColumnTree.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetaudiopluginhostui {

/// While it lives, Return and Down in the find box go to the rows of the list. Without rows the focus stays
/// in the box. Main thread.
class FindBoxKeys : public zetui::ui::KeyboardEventFilter
{
  public:
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;

    /// Neither is null.
    FindBoxKeys(Ptr<zetui::controls::UI_SearchBox> findBox, Ptr<zetui::controls::UI_MultiColumnTree> list);

    bool UI_DoPreKeyboardEvent(zetui::ui::UI_Node* target, const zetui::ui::KeyboardEvent& event) override;

  private:
    Ptr<zetui::controls::UI_SearchBox> findBox;
    Ptr<zetui::controls::UI_MultiColumnTree> list;
    zetui::ui::AddAndRemoveKeyboardEventFilterNode registration;
};

} // namespace zetaudiopluginhostui
