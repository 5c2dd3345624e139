#include <zetui/controls/UI_TextEdit.h>

#include "controls/ClearableLineEdit.h"
#include "nodes/NodeAccess.h"

namespace zetui::controls {

using ui::NodeAccess;

UI_ClearButtonTextEdit::UI_ClearButtonTextEdit()
    : UI_ClearButtonTextEdit(NodeAccess::NewWidget<ClearableLineEdit>())
{}

UI_ClearButtonTextEdit::UI_ClearButtonTextEdit(void* nativeWidget) : UI_TextEdit(nativeWidget) {}

UI_ClearButtonTextEdit::~UI_ClearButtonTextEdit() = default;

void UI_ClearButtonTextEdit::EditTextChanged(ui::UI_ControlChangedMessage*)
{
    if (auto* const widget = static_cast<ClearableLineEdit*>(WidgetOf(this)))
        widget->UpdateClearButton();
}

void UI_ClearButtonTextEdit::EditTextChangedInteractively(ui::UI_InteractiveControlChangedMessage*)
{
    if (auto* const widget = static_cast<ClearableLineEdit*>(WidgetOf(this)))
        widget->UpdateClearButton();
}

} // namespace zetui::controls
