#pragma once

#include <functional>
#include <memory>
#include <string>

#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_Message.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialog/find/FindShortcut.h"

namespace zetaudiopluginhostui {

/// The find box and its label at the right end of the tool strip. Main thread.
class FindStrip
{
  public:
    template<typename T>
    using Ptr = zetui::utility::IntrusivePtr<T>;
    using SearchBox = zetui::controls::UI_SearchBox;

    /// Label and box may be null. The box's shortcut works while the focus is inside `root`. `textChanged` is
    /// called when the user has changed the text.
    FindStrip(Ptr<zetui::controls::UI_StaticText> label, Ptr<SearchBox> box, zetui::ui::UI_SubView* root,
              std::function<void()> textChanged);

    /// Null when the dialog has no find box.
    const Ptr<SearchBox>& Box() const noexcept { return box; }
    /// Empty without a box.
    std::wstring Text() const;
    /// The box's messages go here. The box itself answers them first.
    void OnTextChanged(zetui::ui::UI_ControlChangedMessage* message);
    void OnTextChangedInteractively(zetui::ui::UI_InteractiveControlChangedMessage* message);

    /// Gives label and box the room of a checkbox at the end of the buttons' strip, which is hidden.
    void TakeRoomOf(const zetui::controls::UI_Checkbox& hidden);
    /// Hides label and box while the strip of buttons reaches over them.
    void Fit(const zetui::ui::UI_SubView& buttons);
    /// Stretches the label up to the box, because the archive may leave a gap between the two. The label's
    /// text stands at its right end. To be called before each layout; only the first call does something,
    /// because the layout then keeps the two together.
    void LeadLabelToBox();
    /// True when the box has a text that narrows the list, and nobody can see it.
    bool NarrowsUnseen() const;
    /// Empties the box and tells of it.
    void Clear();

  private:
    void TellOfNewText();

    Ptr<zetui::controls::UI_StaticText> label;
    Ptr<SearchBox> box;
    std::unique_ptr<FindShortcut> shortcut;
    std::function<void()> textChanged;
    /// The text that was told last.
    std::wstring toldText;
    bool isLabelLed = false;
};

} // namespace zetaudiopluginhostui
