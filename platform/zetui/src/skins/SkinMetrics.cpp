#include <algorithm>

#include <QStyleOption>

#include "skins/MnemonicCues.h"
#include "skins/SkinProxyStyle.h"

// The style's sizes and places: the room that the skins give to what they draw.
namespace zetui::skins {

namespace {

/// The gap between a label and the focus frame around it.
constexpr int focusGap = 3;

/// The groove is the whole bar, because there are no arrow buttons.
QRect ScrollBarPart(const QStyleOptionSlider& option, QStyle::SubControl part, int shortest)
{
    const QRect& bar = option.rect;
    if (part == QStyle::SC_ScrollBarGroove)
        return bar;
    const bool horizontal = option.orientation == Qt::Horizontal;
    const int length = horizontal ? bar.width() : bar.height();
    const qint64 range = static_cast<qint64>(option.maximum) - option.minimum;
    int handle = length;
    if (range > 0) {
        const qint64 page = std::max(option.pageStep, 0);
        handle = static_cast<int>(page * length / std::max<qint64>(range + page, 1));
        handle = std::clamp(handle, std::min(shortest, length), length);
    }
    const int start = QStyle::sliderPositionFromValue(option.minimum, option.maximum, option.sliderPosition,
                                                      length - handle, option.upsideDown);
    const auto along = [&](int from, int size) {
        return horizontal ? QRect(bar.left() + from, bar.top(), size, bar.height())
                          : QRect(bar.left(), bar.top() + from, bar.width(), size);
    };
    switch (part) {
    case QStyle::SC_ScrollBarSlider:
        return along(start, handle);
    case QStyle::SC_ScrollBarSubPage:
        return along(0, start);
    case QStyle::SC_ScrollBarAddPage:
        return along(start + handle, length - start - handle);
    default:
        return {};
    }
}

} // namespace

QRect SkinProxyStyle::subControlRect(ComplexControl control, const QStyleOptionComplex* option,
                                     SubControl part, const QWidget* widget) const
{
    const auto* const slider = qstyleoption_cast<const QStyleOptionSlider*>(option);
    if (control == CC_ScrollBar && slider)
        return visualRect(slider->direction, slider->rect,
                          ScrollBarPart(*slider, part, pixelMetric(PM_ScrollBarSliderMin, option, widget)));
    return QProxyStyle::subControlRect(control, option, part, widget);
}

QRect SkinProxyStyle::subElementRect(SubElement element, const QStyleOption* option,
                                     const QWidget* widget) const
{
    const QRect rect = QProxyStyle::subElementRect(element, option, widget);
    switch (element) {
    case SE_LineEditContents: {
        const int padding = skin.controls.fieldPadding;
        return rect.adjusted(padding, 0, -padding, 0);
    }
    case SE_CheckBoxFocusRect: {
        const auto* const button = qstyleoption_cast<const QStyleOptionButton*>(option);
        // Without a label, the ring around the box is enough.
        if (!button || button->text.isEmpty())
            return {};
        const QRect label = QProxyStyle::subElementRect(SE_CheckBoxContents, option, widget);
        const QRect text = itemTextRect(
            option->fontMetrics, label,
            static_cast<int>(Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic), true, button->text);
        return text.adjusted(-focusGap - 1, -1, focusGap + 1, 1) & option->rect;
    }
    case SE_HeaderLabel: {
        const int margin = skin.controls.headerMargin;
        const auto* const header = qstyleoption_cast<const QStyleOptionHeader*>(option);
        const bool sorted = header && header->sortIndicator != QStyleOptionHeader::None;
        const int arrow = sorted ? pixelMetric(PM_HeaderMarkSize, option, widget) + 4 : 0;
        QRect label = option->rect.adjusted(margin, 0, -margin - arrow, 0);
        // A title that nearly fits takes from the margin behind it. Qt keeps four pixels of the label free.
        constexpr int leastMargin = 2, keptFree = 4;
        const int needed = header ? header->fontMetrics.horizontalAdvance(header->text) : 0;
        if (needed + keptFree > label.width() && needed + leastMargin <= label.width() + margin)
            label.setWidth(needed + keptFree);
        return visualRect(option->direction, option->rect, label);
    }
    case SE_HeaderArrow: {
        const int size = pixelMetric(PM_HeaderMarkSize, option, widget);
        const int margin = skin.controls.headerMargin;
        return visualRect(option->direction, option->rect,
                          QRect(option->rect.right() - margin - size,
                                option->rect.top() + (option->rect.height() - size) / 2, size, size));
    }
    default:
        return rect;
    }
}

QSize SkinProxyStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                                       const QWidget* widget) const
{
    const ControlSizes& sizes = skin.controls;
    switch (type) {
    case CT_PushButton:
        return {contents.width() + 2 * sizes.buttonPadding,
                std::max(sizes.buttonHeight, contents.height() + 4)};
    case CT_LineEdit: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        return {size.width(), std::max(sizes.fieldHeight, contents.height() + 4)};
    }
    case CT_HeaderSection: {
        const QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        // Qt counts the margin on all sides.
        return {size.width(), std::max(size.height() - 2 * sizes.headerMargin + 6, sizes.headerHeight)};
    }
    case CT_CheckBox:
        return QProxyStyle::sizeFromContents(type, option, contents, widget) + QSize(focusGap, 0);
    default:
        return QProxyStyle::sizeFromContents(type, option, contents, widget);
    }
}

int SkinProxyStyle::pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const
{
    const ControlSizes& sizes = skin.controls;
    switch (metric) {
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
        return sizes.checkBox;
    case PM_CheckBoxLabelSpacing:
        return 4 + focusGap;
    case PM_ScrollBarExtent:
        return sizes.scrollBar;
    case PM_ScrollBarSliderMin:
        return 28;
    case PM_HeaderMargin:
        return sizes.headerMargin;
    case PM_ButtonDefaultIndicator:
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_ScrollView_ScrollBarSpacing:
        return 0;
    case PM_ButtonMargin:
        return 2 * sizes.buttonPadding;
    case PM_ButtonIconSize:
    case PM_SmallIconSize:
    case PM_LineEditIconSize:
        return 16;
    case PM_MessageBoxIconSize:
        return 32;
    case PM_DefaultFrameWidth:
        return 1;
    case PM_HeaderMarkSize:
        return 9;
    default:
        return QProxyStyle::pixelMetric(metric, option, widget);
    }
}

int SkinProxyStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                              QStyleHintReturn* result) const
{
    switch (hint) {
    case SH_DialogButtonBox_ButtonsHaveIcons:
    case SH_MessageBox_CenterButtons:
    case SH_ScrollBar_Transient:
    case SH_EtchDisabledText:
    case SH_Widget_Animate:
    case SH_Widget_Animation_Duration:
    case SH_DitherDisabledText:
        return 0;
    case SH_UnderlineShortcut:
        return MnemonicCues::AreShownFor(widget) ? 1 : 0;
    case SH_MessageBox_TextInteractionFlags:
        // The text can be copied, but the Tab key does not stop at it.
        return Qt::TextSelectableByMouse;
    default:
        return QProxyStyle::styleHint(hint, option, widget, result);
    }
}

} // namespace zetui::skins
