#include "archives/ArchivedProperties.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <utility>

#include <QWidget>

#include <zetcore/config/Localizer.h>
#include <zetcore/string/Utf.h>
#include <zetui/controls/UI_Checkbox.h>
#include <zetui/controls/UI_StaticText.h>
#include <zetui/controls/UI_TextButton.h>
#include <zetui/controls/UI_TextEdit.h>
#include <zetui/nodes/UI_SubView.h>

#include "controls/OwnText.h"
#include "controls/TextMeasure.h"
#include "nodes/NodeAccess.h"
#include "skins/SkinRecord.h"

namespace zetui::ui {

namespace {

std::wstring ReadLocalised(const ArchivedNode& archived, std::string_view key)
{
    std::string text;
    archived.ReadText(key, text);
    return LocaliseArchivedText(text);
}

/// A mnemonic may be one of its letters where the translation has none.
void KeepOriginal(const ArchivedNode& archived, const UI_Node& node)
{
    std::string text;
    archived.ReadText("text", text);
    const std::size_t start = text.find('=');
    if (!text.starts_with("($$$/") || start == std::string::npos)
        return;
    text.erase(0, start + 1);
    if (text.ends_with(')'))
        text.pop_back();
    WidgetOf(&node)->setProperty(controls::kOriginalTextProperty, QString::fromStdString(text));
}

void Apply(const ArchivedNode& archived, UI_SubView& view)
{
    AutoLayout layout;
    archived.ReadBool("AutoLayout", layout.enabled);
    archived.ReadBool("AutoLayout_Horizontal", layout.horizontal);
    archived.ReadBool("AutoLayout_MaintainMargins", layout.maintainMargins);
    archived.ReadBool("AutoLayout_ScaleChildren", layout.scaleChildren);
    archived.ReadBool("LayoutChildren", layout.layoutChildren);
    view.SetAutoLayout(layout);
    unsigned constraints = 0;
    if (archived.ReadConstraints(constraints))
        view.SetConstraints(constraints);
}

void Apply(const ArchivedNode& archived, controls::UI_TextButton& button)
{
    button.SetText(ReadLocalised(archived, "text"));
    KeepOriginal(archived, button);
    const skins::SkinRecord& skin = skins::CurrentSkin();
    if (!skin.hasButtonVariants)
        return;
    controls::ButtonComponents components;
    int variant = static_cast<int>(components.variant);
    archived.ReadChoice("variant", variant);
    if (variant < 0 || variant > static_cast<int>(controls::Variant::Accent))
        archived.Context().Fail(archived.Line(), "variant is out of range");
    archived.ReadBool("quiet", components.quiet);
    components.variant = static_cast<controls::Variant>(variant);
    button.SetButtonComponents(components);

    std::string icon;
    archived.ReadText("icon", icon);
    const ArchivedNode::Bounds bounds = archived.ReadBounds();
    if (bounds.width == skin.iconButtonSide && bounds.height == skin.iconButtonSide)
        button.SetIcon(IconOfButton(icon, archived.Id()));
}

void Apply(const ArchivedNode& archived, controls::UI_Checkbox& checkbox)
{
    checkbox.SetText(ReadLocalised(archived, "text"));
    KeepOriginal(archived, checkbox);
    bool checked = false;
    archived.ReadBool("checked", checked);
    checkbox.SetChecked(checked);
}

void Apply(const ArchivedNode& archived, controls::UI_StaticText& text)
{
    text.SetText(ReadLocalised(archived, "text"));
    KeepOriginal(archived, text);
    int alignment = controls::UI_StaticText::kAlignLeft;
    archived.ReadChoice("alignment", alignment);
    text.SetAlignment(alignment);
    int fontSize = 0;
    if (archived.ReadChoice("fontSizeID", fontSize))
        WidgetOf(&text)->setFont(controls::ToolkitFont(fontSize));
}

void Apply(const ArchivedNode& archived, controls::UI_TextEdit& edit)
{
    edit.SetValue(ReadLocalised(archived, "text"));
}

template<typename... Classes>
void ApplyFirst(const ArchivedNode& archived, UI_Node& node)
{
    (void)((dynamic_cast<Classes*>(&node) ? (Apply(archived, dynamic_cast<Classes&>(node)), true) : false) ||
           ...);
}

bool BeginsWithIgnoringCase(std::string_view text, std::string_view start)
{
    return text.size() >= start.size() &&
           std::equal(start.begin(), start.end(), text.begin(), [](char wanted, char letter) {
               return wanted == std::tolower(static_cast<unsigned char>(letter));
           });
}

} // namespace

void ApplyArchivedProperties(const ArchivedNode& archived, UI_Node& node)
{
    node.UI_SetID(archived.Id());
    const ArchivedNode::Bounds bounds = archived.ReadBounds();
    NodeAccess::PlaceAsArchived(&node, {bounds.left, bounds.top, bounds.width, bounds.height});
    node.UI_SetTooltip(ReadLocalised(archived, "tooltip"));
    bool visible = true;
    archived.ReadBool("visible", visible);
    node.UI_Show(visible);
    ApplyFirst<UI_SubView>(archived, node);
    ApplyFirst<controls::UI_TextButton, controls::UI_Checkbox, controls::UI_StaticText,
               controls::UI_TextEdit>(archived, node);
}

std::wstring LocaliseArchivedText(std::string_view text)
{
    if (text.starts_with("($$$/") && text.ends_with(')')) {
        text.remove_prefix(1);
        text.remove_suffix(1);
    }
    return zetcore::config::Localizer::Get().LocalizeWide(text);
}

std::string IconOfButton(std::string_view archivedIcon, std::string_view id)
{
    if (!archivedIcon.empty())
        return std::string(archivedIcon);
    static constexpr std::array<std::pair<std::string_view, std::string_view>, 6> icons = {
        {{"add", "add"},
         {"remove", "remove"},
         {"reset", "reset"},
         {"default", "reset"},
         {"ok", "ok"},
         {"cancel", "cancel"}}};
    for (const auto& [start, icon] : icons) {
        if (BeginsWithIgnoringCase(id, start))
            return std::string(icon);
    }
    return {};
}

} // namespace zetui::ui
