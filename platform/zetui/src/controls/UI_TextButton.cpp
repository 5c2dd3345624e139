#include <zetui/controls/UI_TextButton.h>

#include <QPushButton>
#include <QStyle>

#include "application/HandlerErrors.h"
#include "controls/AccessibleButton.h"
#include "controls/OwnText.h"
#include "controls/TextMeasure.h"
#include "dialogs/HeldKeys.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"
#include "skins/SkinIcons.h"
#include "skins/SkinStyle.h"

namespace zetui::controls {

using ui::NodeAccess;

namespace {

constexpr QSize iconSize(16, 16);

} // namespace

struct UI_TextButton::ButtonState
{
    /// Shows text or icon as the state says.
    void Present(UI_TextButton& node);

    std::wstring text;
    std::string icon;
    ButtonComponents components;
    /// The accessible name is the text, because an icon stands in its place; otherwise it is the caller's.
    bool namedByText = false;
};

void UI_TextButton::ButtonState::Present(UI_TextButton& node)
{
    auto* const widget = static_cast<QPushButton*>(WidgetOf(&node));
    if (!widget)
        return;
    TakeMnemonicAway(*widget);
    const QString shown = pixmill::ToQString(text);
    const QIcon picture = icon.empty() ? QIcon() : skins::MakeIcon(icon);
    widget->setIcon(picture);
    widget->setText(picture.isNull() ? shown : QString());
    if (!picture.isNull() || namedByText)
        widget->setAccessibleName(picture.isNull() ? QString() : WithoutMnemonic(shown));
    namedByText = !picture.isNull();
    const std::wstring tooltip = node.UI_GetTooltip();
    const std::wstring fallback = picture.isNull() ? std::wstring() : pixmill::ToWide(WithoutMnemonic(shown));
    widget->setToolTip(pixmill::PlainForTooltip(tooltip.empty() ? fallback : tooltip));
}

UI_TextButton::UI_TextButton()
    : UI_ControlView(NodeAccess::NewWidget<QPushButton>()), button(std::make_unique<ButtonState>())
{
    auto* const widget = static_cast<QPushButton*>(WidgetOf(this));
    // Return presses the button that has the focus, which then looks like the default button.
    widget->setAutoDefault(true);
    new dialogs::HeldAnswerFilter(widget);
    widget->setIconSize(iconSize);
    QObject::connect(widget, &QPushButton::clicked, NodeAccess::ConnectionContext(this), [this] {
        ui::CallFromToolkit([this] {
            ui::UI_ButtonChangedMessage message(this);
            SendChanged(message);
        });
    });
    NodeAccess::SetNeededSize(this, [widget] {
        return widget->icon().isNull() ? TextSize(widget->fontMetrics(), widget->text()) + buttonMargins
                                       : QSizeF(0, 0);
    });
    SetButtonComponents({});
    UseAccessibleButtons();
}

UI_TextButton::~UI_TextButton() = default;

void UI_TextButton::SetText(const std::wstring& text)
{
    button->text = text;
    button->Present(*this);
}

std::wstring UI_TextButton::GetText() const
{
    return button->text;
}

void UI_TextButton::SetButtonComponents(const ButtonComponents& components)
{
    button->components = components;
    if (QWidget* const widget = WidgetOf(this)) {
        widget->setProperty(skins::kVariantProperty, static_cast<int>(components.variant));
        widget->setProperty(skins::kQuietProperty, components.quiet);
        widget->update();
    }
}

ButtonComponents UI_TextButton::GetButtonComponents() const noexcept
{
    return button->components;
}

void UI_TextButton::SetIcon(const std::string& name)
{
    button->icon = name;
    button->Present(*this);
}

void UI_TextButton::Click()
{
    const utility::IntrusivePtr<UI_TextButton> kept(this);
    ui::HandlerErrors errors;
    if (auto* const widget = static_cast<QPushButton*>(WidgetOf(this)))
        widget->click();
    errors.Rethrow();
}

std::pair<float, float> UI_TextButton::UI_GetRecommendedSize(const pixmill::SupplierInterface*,
                                                             const std::wstring& text, float textSize,
                                                             const ButtonComponents&)
{
    NodeAccess::RequireWindows();
    const QSizeF size =
        TextSize(QFontMetricsF(ToolkitFont(0, textSize)), pixmill::ToQString(text)) + buttonMargins;
    return {static_cast<float>(size.width()), static_cast<float>(size.height())};
}

} // namespace zetui::controls
