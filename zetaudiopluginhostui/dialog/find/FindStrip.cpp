#include "dialog/find/FindStrip.h"

#include <utility>

#include <zetcore/config/Localizer.h>

#include "dialog/find/ToolStripFit.h"

namespace zetaudiopluginhostui {

FindStrip::FindStrip(Ptr<zetui::controls::UI_StaticText> findLabel, Ptr<SearchBox> findBox,
                     zetui::ui::UI_SubView* root, std::function<void()> tellOfText)
    : label(std::move(findLabel)), box(std::move(findBox)), textChanged(std::move(tellOfText))
{
    if (!box)
        return;
    const std::wstring prompt =
        zetcore::config::Localizer::Get().LocalizeWide("$$$/AudioPluginManager/FindPrompt=Filter plug-ins");
    box->SetPrompt(prompt);
    box->UI_SetAccessibleName(prompt);
    box->UI_SetAccessibleDescription(zetcore::config::Localizer::Get().LocalizeWide(
        "$$$/AudioPluginManager/FindDescription=Shows the plug-ins with this text in their name, path or "
        "version."));
    // The label's mnemonic goes to the box.
    if (label)
        label->SetBuddy(box.get());
    shortcut = std::make_unique<FindShortcut>(root, box);
    toldText = box->GetValue();
}

std::wstring FindStrip::Text() const
{
    return box ? box->GetValue() : std::wstring();
}

void FindStrip::OnTextChanged(zetui::ui::UI_ControlChangedMessage* message)
{
    box->EditTextChanged(message);
    TellOfNewText();
}

void FindStrip::OnTextChangedInteractively(zetui::ui::UI_InteractiveControlChangedMessage* message)
{
    box->EditTextChangedInteractively(message);
    TellOfNewText();
}

void FindStrip::TellOfNewText()
{
    std::wstring text = box->GetValue();
    if (text == toldText)
        return;
    toldText = std::move(text);
    textChanged();
}

void FindStrip::TakeRoomOf(const zetui::controls::UI_Checkbox& hidden)
{
    if (!box)
        return;
    const RectF checkbox = hidden.UI_GetLocalRectF(true);
    if (zetui::ui::UI_SubView* const strip = hidden.UI_GetParentNode()) {
        RectF frame = strip->UI_GetLocalRectF(true);
        frame.width -= checkbox.width;
        strip->UI_SetLocalRectF(frame);
    }
    if (label) {
        // The checkbox lies in the strip of buttons and the label in the strip around it. Still the label
        // takes over the checkbox's left edge as it is.
        RectF frame = label->UI_GetLocalRectF(true);
        frame.left = checkbox.left;
        label->UI_SetLocalRectF(frame);
    }
    RectF frame = box->UI_GetLocalRectF(true);
    frame.left -= checkbox.width;
    frame.width += checkbox.width;
    box->UI_SetLocalRectF(frame);
}

void FindStrip::Fit(const zetui::ui::UI_SubView& buttons)
{
    const RectF buttonsFrame = buttons.UI_GetLocalRectF(true);
    if (label)
        label->UI_Show(BeginsBehind(label->UI_GetLocalRectF(true), buttonsFrame));
    if (box)
        box->UI_Show(BeginsBehind(box->UI_GetLocalRectF(true), buttonsFrame));
}

bool FindStrip::NarrowsUnseen() const
{
    return box && !box->UI_IsShown() && !box->GetValue().empty();
}

void FindStrip::Clear()
{
    if (!box)
        return;
    box->SetValue({});
    TellOfNewText();
}

void FindStrip::LeadLabelToBox()
{
    constexpr float gap = 4;
    if (!label || !box || std::exchange(isLabelLed, true))
        return;
    RectF frame = label->UI_GetLocalRectF(true);
    const float end = box->UI_GetLocalRectF(true).left - gap;
    if (end <= frame.left + frame.width)
        return;
    frame.width = end - frame.left;
    label->UI_SetLocalRectF(frame);
}

} // namespace zetaudiopluginhostui
