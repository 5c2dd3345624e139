#include "skins/SkinProxyStyle.h"

#include <QAbstractButton>
#include <QAbstractScrollArea>
#include <QHeaderView>
#include <QLineEdit>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOption>

#include "pixmill/QtConversions.h"
#include "skins/ControlPainting.h"
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

} // namespace

SkinProxyStyle::SkinProxyStyle(const SkinRecord& drawnSkin)
    : QProxyStyle(QStringLiteral("Fusion")), skin(drawnSkin)
{}

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
            painter->save();
            const bool focused = option->state.testFlag(State_HasFocus);
            painter->setPen(pixmill::ToQt(focused ? colors.focus : colors.tableOutline));
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(option->rect.adjusted(0, 0, -1, -1));
            painter->restore();
            return;
        }
        break;
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
    case CE_HeaderEmptyArea:
        painter->fillRect(option->rect, pixmill::ToQt(CurrentColors().header));
        painter->fillRect(QRect(option->rect.left(), option->rect.bottom(), option->rect.width(), 1),
                          pixmill::ToQt(CurrentColors().tableOutline));
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
        DrawScrollBar(*slider, *painter);
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
