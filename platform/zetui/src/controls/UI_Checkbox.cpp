#include <zetui/controls/UI_Checkbox.h>

#include <algorithm>

#include <QCheckBox>

#include "application/HandlerErrors.h"
#include "controls/AccessibleButton.h"
#include "controls/OwnText.h"
#include "controls/TextMeasure.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"

namespace zetui::controls {

using ui::NodeAccess;

namespace {

Qt::CheckState QtStateOf(int value)
{
    switch (value) {
    case UI_Checkbox::kUnchecked:
        return Qt::Unchecked;
    case UI_Checkbox::kMixed:
        return Qt::PartiallyChecked;
    default:
        return Qt::Checked;
    }
}

int ValueOf(Qt::CheckState state)
{
    if (state == Qt::PartiallyChecked)
        return UI_Checkbox::kMixed;
    return state == Qt::Checked ? UI_Checkbox::kChecked : UI_Checkbox::kUnchecked;
}

} // namespace

struct UI_Checkbox::CheckboxState
{
    /// The state is kept here too, because the widget goes when Qt deletes it.
    int value = kUnchecked;
    std::wstring text;
};

UI_Checkbox::UI_Checkbox()
    : UI_ControlView(NodeAccess::NewWidget<QCheckBox>()), checkbox(std::make_unique<CheckboxState>())
{
    auto* const widget = static_cast<QCheckBox*>(WidgetOf(this));
    QObject::connect(widget, &QCheckBox::clicked, NodeAccess::ConnectionContext(this), [this, widget] {
        // The user chooses between on and off. Only programs set the third state.
        widget->setTristate(false);
        checkbox->value = ValueOf(widget->checkState());
        ui::CallFromToolkit([this] {
            ui::UI_ButtonChangedMessage message(this);
            SendChanged(message);
        });
    });
    NodeAccess::SetNeededSize(this, [widget] {
        return QSizeF(widget->sizeHint().width(), TextSize(widget->fontMetrics(), widget->text()).height());
    });
    UseAccessibleButtons();
}

UI_Checkbox::~UI_Checkbox() = default;

void UI_Checkbox::SetValue(int value)
{
    const Qt::CheckState state = QtStateOf(value);
    checkbox->value = ValueOf(state);
    if (auto* const widget = static_cast<QCheckBox*>(WidgetOf(this))) {
        widget->setTristate(state == Qt::PartiallyChecked);
        widget->setCheckState(state);
    }
}

int UI_Checkbox::GetValue() const
{
    return checkbox->value;
}

void UI_Checkbox::SetText(const std::wstring& text)
{
    checkbox->text = text;
    if (auto* const widget = static_cast<QCheckBox*>(WidgetOf(this))) {
        TakeMnemonicAway(*widget);
        widget->setText(pixmill::ToQString(text));
    }
}

std::wstring UI_Checkbox::GetText() const
{
    return checkbox->text;
}

} // namespace zetui::controls
