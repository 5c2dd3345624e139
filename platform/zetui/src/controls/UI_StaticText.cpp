#include <zetui/controls/UI_StaticText.h>

#include <QLabel>

#include "controls/OwnText.h"
#include "controls/TextMeasure.h"
#include "nodes/NodeAccess.h"
#include "pixmill/QtConversions.h"

namespace zetui::controls {

using ui::NodeAccess;

namespace {

/// The gap between a text and the edge that it is aligned to. It keeps titles off the outlines of their
/// sections.
constexpr int edgeInset = 6;

} // namespace

UI_StaticText::UI_StaticText() : UI_ControlView(NodeAccess::NewWidget<QLabel>())
{
    auto* const widget = static_cast<QLabel*>(WidgetOf(this));
    widget->setTextFormat(Qt::PlainText);
    widget->setIndent(edgeInset);
    NodeAccess::SetNeededSize(this, [widget] {
        // A label that names a control shows its mnemonic. Others show their "&".
        const QFontMetricsF metrics(widget->fontMetrics());
        if (widget->text().isEmpty())
            return QSizeF(0, 0);
        const QSizeF text = TextSize(metrics, widget->text());
        const qreal width = widget->buddy() ? text.width() : metrics.horizontalAdvance(widget->text()) + 1;
        return QSizeF(width + edgeInset, text.height());
    });
}

UI_StaticText::~UI_StaticText() = default;

void UI_StaticText::SetText(const std::wstring& text)
{
    if (auto* const widget = static_cast<QLabel*>(WidgetOf(this))) {
        TakeMnemonicAway(*widget);
        widget->setText(pixmill::ToQString(text));
    }
}

std::wstring UI_StaticText::GetText() const
{
    const auto* const widget = static_cast<QLabel*>(WidgetOf(this));
    return widget ? pixmill::ToWide(OwnText(*widget)) : std::wstring();
}

void UI_StaticText::SetAlignment(int alignment)
{
    auto* const widget = static_cast<QLabel*>(WidgetOf(this));
    if (!widget)
        return;
    Qt::Alignment across = Qt::AlignLeft;
    if (alignment == kAlignCenter)
        across = Qt::AlignHCenter;
    else if (alignment == kAlignRight)
        across = Qt::AlignRight;
    widget->setAlignment(across | Qt::AlignVCenter);
}

void UI_StaticText::SetBuddy(UI_Node* named)
{
    if (auto* const widget = static_cast<QLabel*>(WidgetOf(this)))
        widget->setBuddy(WidgetOf(named));
}

} // namespace zetui::controls
