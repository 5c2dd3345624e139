#include <chrono>

#include <QAbstractScrollArea>
#include <QPainter>
#include <QPushButton>
#include <QStyleOption>

#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"
#include "skins/ControlPainting.h"
#include "skins/LineOfText.h"
#include "skins/SkinColors.h"
#include "skins/SkinProxyStyle.h"
#include "skins/SkinStyle.h"

// The style's drawing: it puts Qt's options into the words of `ControlPainting`.
namespace zetui::skins {

namespace {

ButtonLook LookOf(const QStyleOptionButton& option, const QWidget* widget, const SkinRecord& skin)
{
    ButtonLook look;
    look.state.enabled = option.state.testFlag(QStyle::State_Enabled);
    look.state.hovered = option.state.testFlag(QStyle::State_MouseOver);
    look.state.pressed =
        option.state.testFlag(QStyle::State_Sunken) || option.state.testFlag(QStyle::State_On);
    look.state.focused = option.state.testFlag(QStyle::State_HasFocus);
    const QVariant variant = widget ? widget->property(kVariantProperty) : QVariant();
    if (variant.isValid()) {
        look.variant = static_cast<ButtonVariant>(variant.toInt());
        look.quiet = widget->property(kQuietProperty).toBool();
    }
    if (!skin.hasButtonVariants || !variant.isValid())
        look.isDefault = option.features.testFlag(QStyleOptionButton::DefaultButton);
    return look;
}

/// Goes from 0 to 1 and begins again.
double BusyPhase()
{
    constexpr std::chrono::milliseconds period{1500};
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now % period) / period;
}

/// True for the bar of a text that has no surface of its own.
bool IsOnWindowsSurface(const QWidget* bar)
{
    const QWidget* const container = bar ? bar->parentWidget() : nullptr;
    const auto* const area =
        qobject_cast<const QAbstractScrollArea*>(container ? container->parentWidget() : nullptr);
    return area && !area->viewport()->autoFillBackground();
}

} // namespace

void SkinProxyStyle::drawItemText(QPainter* painter, const QRect& rect, int flags, const QPalette& palette,
                                  bool enabled, const QString& text, QPalette::ColorRole role) const
{
    if (text.isEmpty() || text.contains(u'\n') || (flags & (Qt::TextWordWrap | Qt::TextWrapAnywhere))) {
        QProxyStyle::drawItemText(painter, rect, flags, palette, enabled, text, role);
        return;
    }
    LineOfText line{text};
    if (flags & (Qt::TextShowMnemonic | Qt::TextHideMnemonic))
        line = WithoutMarks(text);
    if (flags & Qt::TextHideMnemonic)
        line.letter = -1;
    const QPen before = painter->pen();
    if (role != QPalette::NoRole)
        painter->setPen(QPen(palette.brush(role), before.widthF()));
    PaintLineOfText(*painter, rect, Qt::Alignment(flags), line);
    painter->setPen(before);
}

void SkinProxyStyle::DrawPushButton(const QStyleOptionButton& option, QPainter& painter,
                                    const QWidget* widget) const
{
    const SkinColors& colors = CurrentColors();
    const ButtonLook look = LookOf(option, widget, skin);
    PaintButton(painter, QRectF(option.rect), skin, colors, look);
    const ButtonColors used = skin.buttonColors(colors, look);
    if (option.text.isEmpty() && !option.icon.isNull()) {
        const QIcon::Mode lit = used.isAccented ? QIcon::Selected : QIcon::Normal;
        QRect place(QPoint(0, 0), option.iconSize);
        place.moveCenter(option.rect.center());
        option.icon.paint(&painter, place, Qt::AlignCenter, look.state.enabled ? lit : QIcon::Disabled);
        return;
    }
    QStyleOptionButton label(option);
    const QColor textColor = pixmill::ToQt(used.text);
    label.palette.setColor(QPalette::ButtonText, textColor);
    label.palette.setColor(QPalette::Disabled, QPalette::ButtonText, textColor);
    proxy()->drawControl(CE_PushButtonLabel, &label, &painter, widget);
}

void SkinProxyStyle::DrawCheckBox(const QStyleOptionButton& option, QPainter& painter,
                                  const QWidget* widget) const
{
    QStyleOptionButton part(option);
    // One ring is enough: around the label, or around a box that has none.
    const bool focused = option.state.testFlag(State_HasFocus);
    const QRect ring = focused ? proxy()->subElementRect(SE_CheckBoxFocusRect, &option, widget) : QRect();
    part.state.setFlag(State_HasFocus, focused && ring.isEmpty());
    part.rect = proxy()->subElementRect(SE_CheckBoxIndicator, &option, widget);
    // In a low row there is no room around the box, so that the ring takes the box's edge.
    if (part.state.testFlag(State_HasFocus))
        part.rect &= option.rect;
    proxy()->drawPrimitive(PE_IndicatorCheckBox, &part, &painter, widget);
    part.rect = proxy()->subElementRect(SE_CheckBoxContents, &option, widget);
    proxy()->drawControl(CE_CheckBoxLabel, &part, &painter, widget);
    if (!ring.isEmpty())
        PaintFocusFrame(painter, QRectF(ring), skin, CurrentColors());
}

void SkinProxyStyle::DrawProgressBar(const QStyleOptionProgressBar& option, QPainter& painter) const
{
    double part = -1;
    if (option.maximum > option.minimum)
        part = (static_cast<double>(option.progress) - option.minimum) /
               (static_cast<double>(option.maximum) - option.minimum);
    const bool reversed = (option.direction == Qt::RightToLeft) != option.invertedAppearance;
    PaintProgress(painter, QRectF(option.rect), skin, CurrentColors(), part, BusyPhase(), reversed);
}

void SkinProxyStyle::DrawHeader(const QStyleOptionHeader& option, QPainter& painter,
                                const QWidget* widget) const
{
    painter.save();
    painter.setClipRect(option.rect, Qt::IntersectClip);
    proxy()->drawControl(CE_HeaderSection, &option, &painter, widget);
    // The newer option says how the title is shortened.
    QStyleOptionHeaderV2 part;
    if (const auto* const newer = qstyleoption_cast<const QStyleOptionHeaderV2*>(&option)) {
        part = *newer;
    } else {
        static_cast<QStyleOptionHeader&>(part) = option;
        part.version = QStyleOptionHeaderV2::Version;
    }
    part.rect = proxy()->subElementRect(SE_HeaderLabel, &option, widget);
    proxy()->drawControl(CE_HeaderLabel, &part, &painter, widget);
    if (option.sortIndicator != QStyleOptionHeader::None) {
        part.rect = proxy()->subElementRect(SE_HeaderArrow, &option, widget);
        proxy()->drawPrimitive(PE_IndicatorHeaderArrow, &part, &painter, widget);
    }
    painter.restore();
}

void SkinProxyStyle::DrawHeaderSection(const QStyleOption& option, QPainter& painter,
                                       const QWidget* widget) const
{
    const SkinColors& colors = CurrentColors();
    const QRect& rect = option.rect;
    const bool pressed = option.state.testFlag(State_Sunken);
    const bool hovered = option.state.testFlag(State_MouseOver) && option.state.testFlag(State_Enabled);
    painter.fillRect(
        rect, pixmill::ToQt(pressed ? colors.buttonPressed : (hovered ? colors.hoverRow : colors.header)));
    pixmill::PaintStraightLine(painter, QRect(rect.left(), rect.bottom(), rect.width(), 1),
                               pixmill::ToQt(colors.tableOutline), true);
    const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(&option);
    const bool isLast = header && (header->position == QStyleOptionHeader::End ||
                                   header->position == QStyleOptionHeader::OnlyOneSection);
    if (isLast && widget && rect.right() >= widget->rect().right())
        return;
    const int inset = skin.controls.headerLineInset;
    pixmill::PaintStraightLine(painter,
                               QRect(rect.right(), rect.top() + inset, 1, rect.height() - 1 - 2 * inset),
                               pixmill::ToQt(colors.tableOutline), true);
}

void SkinProxyStyle::DrawScrollBar(const QStyleOptionSlider& option, QPainter& painter,
                                   const QWidget* bar) const
{
    const SkinColors& colors = CurrentColors();
    painter.fillRect(option.rect, IsOnWindowsSurface(bar) ? pixmill::ToQt(colors.window)
                                                          : ScrollGrooveColor(skin, colors));
    if (option.maximum <= option.minimum)
        return;
    ControlState state;
    state.enabled = option.state.testFlag(State_Enabled);
    const bool onHandle = option.activeSubControls.testFlag(SC_ScrollBarSlider);
    state.hovered = onHandle && option.state.testFlag(State_MouseOver);
    state.pressed = onHandle && option.state.testFlag(State_Sunken);
    const bool horizontal = option.orientation == Qt::Horizontal;
    const int margin = skin.controls.scrollHandleMargin;
    const QRect handle = proxy()->subControlRect(CC_ScrollBar, &option, SC_ScrollBarSlider, nullptr);
    PaintScrollHandle(painter,
                      QRectF(horizontal ? handle.adjusted(1, margin, -1, -margin)
                                        : handle.adjusted(margin, 1, -margin, -1)),
                      skin, colors, state);
}

} // namespace zetui::skins
