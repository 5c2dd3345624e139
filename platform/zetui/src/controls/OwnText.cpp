#include "controls/OwnText.h"

#include <QAbstractButton>
#include <QLabel>
#include <QVariant>

namespace zetui::controls {

namespace {

constexpr char ownTextProperty[] = "zetuiOwnText";

void SetShownText(QWidget& widget, const QString& text)
{
    if (auto* const button = qobject_cast<QAbstractButton*>(&widget))
        button->setText(text);
    else if (auto* const label = qobject_cast<QLabel*>(&widget))
        label->setText(text);
}

} // namespace

QString OwnText(const QWidget& widget)
{
    if (const QVariant own = widget.property(ownTextProperty); own.isValid())
        return own.toString();
    if (const auto* const button = qobject_cast<const QAbstractButton*>(&widget))
        return button->text();
    const auto* const label = qobject_cast<const QLabel*>(&widget);
    return label ? label->text() : QString();
}

void ShowWithMnemonic(QWidget& widget, const QString& marked)
{
    const QString own = OwnText(widget);
    widget.setProperty(ownTextProperty, own);
    SetShownText(widget, marked);
    if (widget.accessibleName().isEmpty())
        widget.setAccessibleName(own);
}

void TakeMnemonicAway(QWidget& widget)
{
    if (!widget.property(ownTextProperty).isValid())
        return;
    const QString own = OwnText(widget);
    widget.setProperty(ownTextProperty, QVariant());
    SetShownText(widget, own);
    if (widget.accessibleName() == own)
        widget.setAccessibleName(QString());
}

} // namespace zetui::controls
