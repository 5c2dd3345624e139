#include <zetui/controls/UI_TextEdit.h>

#include <QLineEdit>

#include "application/HandlerErrors.h"
#include "controls/TextMeasure.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"

namespace zetui::controls {

using ui::NodeAccess;

namespace {

constexpr double marginsAboveAndBelow = 4;

} // namespace

UI_TextEdit::UI_TextEdit() : UI_TextEdit(NodeAccess::NewWidget<QLineEdit>()) {}

UI_TextEdit::UI_TextEdit(void* nativeWidget) : UI_ControlView(nativeWidget)
{
    auto* const widget = static_cast<QLineEdit*>(WidgetOf(this));
    QObject* const context = NodeAccess::ConnectionContext(this);
    QObject::connect(widget, &QLineEdit::textEdited, context, [this] {
        ui::CallFromToolkit([this] {
            ui::UI_InteractiveControlChangedMessage message(this);
            SendChangedInteractively(message);
        });
    });
    QObject::connect(widget, &QLineEdit::editingFinished, context, [this] {
        ui::CallFromToolkit([this] {
            ui::UI_ControlChangedMessage message(this);
            SendChanged(message);
        });
    });
    NodeAccess::SetNeededSize(this, [widget] {
        return QSizeF(0, TextSize(widget->fontMetrics(), QString()).height() + marginsAboveAndBelow);
    });
}

UI_TextEdit::~UI_TextEdit() = default;

void UI_TextEdit::SetValue(const std::wstring& text)
{
    if (auto* const widget = static_cast<QLineEdit*>(WidgetOf(this)))
        widget->setText(pixmill::ToQString(text));
}

std::wstring UI_TextEdit::GetValue() const
{
    const auto* const widget = static_cast<QLineEdit*>(WidgetOf(this));
    return widget ? pixmill::ToWide(widget->text()) : std::wstring();
}

} // namespace zetui::controls
