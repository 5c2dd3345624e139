#include "skins/SkinProxyStyle.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"
#include "skins/ControlPainting.h"
#include "skins/MnemonicCues.h"
#include "skins/SkinColors.h"
#include "skins/SkinIcons.h"

namespace zetui::skins {

namespace {

ControlState StateOf(const QStyleOption& option)
{
    return {.enabled = option.state.testFlag(QStyle::State_Enabled),
            .hovered = option.state.testFlag(QStyle::State_MouseOver),
            .pressed = option.state.testFlag(QStyle::State_Sunken),
            .focused = option.state.testFlag(QStyle::State_HasFocus)};
}

CheckMark MarkOf(const QStyleOption& option)
{
    if (option.state.testFlag(QStyle::State_NoChange))
        return CheckMark::Mixed;
    return option.state.testFlag(QStyle::State_On) ? CheckMark::Checked : CheckMark::None;
}

/// Fields inside of other controls (a spin box's) have no frame of their own.
bool HasFrame(const QStyleOption& option)
{
    const auto* const frame = qstyleoption_cast<const QStyleOptionFrame*>(&option);
    return frame && frame->lineWidth > 0;
}

/// True for a widget that reacts to the pointer. The platform's style would let a click between its arrows
/// through to the widget.
bool ReactsToPointer(const QWidget* widget)
{
    return qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLineEdit*>(widget) ||
           qobject_cast<const QScrollBar*>(widget) || qobject_cast<const QHeaderView*>(widget);
}

/// At a broken scale the frame is thinner than its room. The rest belongs to the surface inside.
void FillRoomOfFrame(QPainter& painter, const QRectF& rect, const QColor& color)
{
    const QRectF room = pixmill::OnWholePixels(painter, rect);
    const QRectF inside = pixmill::OnWholePixels(painter, rect.adjusted(1, 1, -1, -1));
    painter.fillRect(QRectF(room.topLeft(), QPointF(room.right(), inside.top())), color);
    painter.fillRect(QRectF(QPointF(room.left(), inside.bottom()), room.bottomRight()), color);
    painter.fillRect(QRectF(QPointF(room.left(), inside.top()), inside.bottomLeft()), color);
    painter.fillRect(QRectF(inside.topRight(), QPointF(room.right(), inside.bottom())), color);
}

} // namespace

SkinProxyStyle::SkinProxyStyle(const SkinRecord& drawnSkin)
    : QProxyStyle(QStringLiteral("Fusion")), skin(drawnSkin)
{
    MnemonicCues::Follow();
}

void SkinProxyStyle::drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                                   const QWidget* widget) const
{
    const SkinColors& colors = CurrentColors();
    const QRectF rect(option->rect);
    switch (element) {
    case PE_IndicatorCheckBox:
    case PE_IndicatorItemViewItemCheck:
        PaintCheckBox(*painter, rect, skin, colors, StateOf(*option), MarkOf(*option));
        return;
    case PE_PanelLineEdit:
        if (HasFrame(*option))
            PaintField(*painter, rect, skin, colors, StateOf(*option));
        else
            painter->fillRect(rect, option->palette.brush(QPalette::Base));
        return;
    case PE_FrameLineEdit:
        return;
    case PE_FrameFocusRect:
        if (!rect.isEmpty())
            PaintFocusFrame(*painter, rect, skin, colors);
        return;
    case PE_Frame:
        if (qobject_cast<const QAbstractScrollArea*>(widget)) {
            const bool focused = option->state.testFlag(State_HasFocus);
            FillRoomOfFrame(*painter, rect, pixmill::ToQt(colors.base));
            pixmill::PaintFrame(*painter, rect, pixmill::ToQt(focused ? colors.focus : colors.tableOutline),
                                1);
            return;
        }
        break;
    case PE_PanelMenu:
        // A menu stands before a list, so that its edge must be seen.
        painter->fillRect(rect, pixmill::ToQt(colors.base));
        pixmill::PaintFrame(*painter, rect, pixmill::ToQt(colors.fieldOutline), 1);
        return;
    case PE_PanelScrollAreaCorner:
        // The corner looks like the grooves of the scroll bars that meet there.
        painter->fillRect(option->rect, ScrollGrooveColor(skin, colors));
        return;
    case PE_IndicatorHeaderArrow:
        if (const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option))
            PaintSortArrow(*painter, rect, colors, header->sortIndicator == QStyleOptionHeader::SortDown);
        return;
    default:
        break;
    }
    QProxyStyle::drawPrimitive(element, option, painter, widget);
}

void SkinProxyStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                                 const QWidget* widget) const
{
    switch (element) {
    case CE_PushButton:
        if (const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            DrawPushButton(*button, *painter, widget);
            return;
        }
        break;
    case CE_CheckBox:
        if (const auto* const box = qstyleoption_cast<const QStyleOptionButton*>(option)) {
            DrawCheckBox(*box, *painter, widget);
            return;
        }
        break;
    case CE_ProgressBar:
        if (const auto* const bar = qstyleoption_cast<const QStyleOptionProgressBar*>(option)) {
            DrawProgressBar(*bar, *painter);
            return;
        }
        break;
    case CE_Header:
        if (const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option)) {
            DrawHeader(*header, *painter, widget);
            return;
        }
        break;
    case CE_HeaderSection:
        DrawHeaderSection(*option, *painter, widget);
        return;
    case CE_MenuItem:
        if (const auto* const item = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
            item && item->menuItemType == QStyleOptionMenuItem::Separator && item->text.isEmpty()) {
            const QRect& place = option->rect;
            pixmill::PaintStraightLine(*painter,
                                       QRect(place.left() + 4, place.center().y(), place.width() - 8, 1),
                                       pixmill::ToQt(CurrentColors().outline), false);
            return;
        }
        break;
    case CE_HeaderEmptyArea:
        painter->fillRect(option->rect, pixmill::ToQt(CurrentColors().header));
        pixmill::PaintStraightLine(*painter,
                                   QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                                   pixmill::ToQt(CurrentColors().tableOutline), true);
        return;
    default:
        break;
    }
    QProxyStyle::drawControl(element, option, painter, widget);
}

void SkinProxyStyle::drawComplexControl(ComplexControl control, const QStyleOptionComplex* option,
                                        QPainter* painter, const QWidget* widget) const
{
    const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        DrawScrollBar(*slider, *painter, widget);
    else
        QProxyStyle::drawComplexControl(control, option, painter, widget);
}

QIcon SkinProxyStyle::standardIcon(StandardPixmap icon, const QStyleOption* option,
                                   const QWidget* widget) const
{
    switch (icon) {
    case SP_MessageBoxInformation:
    case SP_MessageBoxQuestion:
        return MakeIcon("note");
    case SP_MessageBoxWarning:
        return MakeIcon("caution");
    case SP_MessageBoxCritical:
        return MakeIcon("stop");
    case SP_LineEditClearButton:
        return MakeIcon("clear");
    default:
        return QProxyStyle::standardIcon(icon, option, widget);
    }
}

void SkinProxyStyle::polish(QWidget* widget)
{
    QProxyStyle::polish(widget);
    if (ReactsToPointer(widget))
        widget->setAttribute(Qt::WA_Hover);
}

void SkinProxyStyle::unpolish(QWidget* widget)
{
    if (ReactsToPointer(widget))
        widget->setAttribute(Qt::WA_Hover, false);
    QProxyStyle::unpolish(widget);
}

} // namespace zetui::skins
