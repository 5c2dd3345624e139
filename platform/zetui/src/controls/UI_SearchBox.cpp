#include <zetui/controls/UI_TextEdit.h>

#include "controls/ClearableLineEdit.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"

namespace zetui::controls {

using ui::NodeAccess;

UI_SearchBox::UI_SearchBox(bool withMenu, bool searchOnReturnOnly)
    : UI_ClearButtonTextEdit(NodeAccess::NewWidget<SearchLineEdit>(withMenu)),
      onReturnOnly(searchOnReturnOnly)
{
    auto* const widget = static_cast<SearchLineEdit*>(WidgetOf(this));
    QObject* const context = NodeAccess::ConnectionContext(this);
    if (onReturnOnly)
        QObject::disconnect(widget, &QLineEdit::textEdited, context, nullptr);
    if (withMenu)
        QObject::connect(widget, &QLineEdit::editingFinished, context,
                         [widget] { widget->Remember(widget->text()); });
}

UI_SearchBox::~UI_SearchBox() = default;

void UI_SearchBox::SetPrompt(const std::wstring& prompt)
{
    if (auto* const widget = static_cast<SearchLineEdit*>(WidgetOf(this)))
        widget->setPlaceholderText(pixmill::ToQString(prompt));
}

} // namespace zetui::controls
