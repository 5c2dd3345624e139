#include "tree/TreeFoot.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextDocument>
#include <QTextLayout>

#include <zetui/skins/ListSizes.h>

#include "application/HandlerErrors.h"
#include "pixmill/PixelGrid.h"
#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"

namespace zetui::controls {

namespace {

constexpr int mostLines = 3;
/// Its share of the tree's height.
constexpr int heightShare = 4;
constexpr int marginAbove = 4, marginBelow = 5;
constexpr int gap = 8;
constexpr int focusFrame = 2;

/// As the text's layout counts it. Letters of another script come from another font and may be higher.
qreal LineHeight(const QString& text, const QFont& font)
{
    QTextLayout layout(QChar(u'x') + QString(text).replace(QChar(u'\n'), QChar(u' ')), font);
    layout.beginLayout();
    QTextLine line = layout.createLine();
    line.setLeadingIncluded(true);
    line.setLineWidth(QWIDGETSIZE_MAX);
    layout.endLayout();
    return line.height();
}

} // namespace

TreeFoot::TreeFoot() : notice(new QLabel), command(new QPushButton), details(new QPlainTextEdit)
{
    auto* const layout = new QGridLayout(this);
    const int beside = static_cast<int>(skins::GetListSizes().cellPadding.second);
    layout->setContentsMargins(beside, marginAbove, focusFrame, marginBelow);
    layout->setHorizontalSpacing(gap);
    layout->setVerticalSpacing(marginAbove);
    layout->addWidget(notice, 0, 0);
    layout->addWidget(command, 0, 1);
    layout->addWidget(details, 1, 0, 1, 3);
    layout->setColumnStretch(2, 1);
    layout->setRowStretch(1, 1);
    notice->setTextFormat(Qt::PlainText);
    notice->hide();
    command->hide();
    connect(command, &QPushButton::clicked, this, [this] {
        ui::CallFromToolkit([this] {
            // The function may replace itself.
            if (const auto act = pressed)
                act();
        });
    });
    details->setReadOnly(true);
    details->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    details->setTabChangesFocus(true);
    details->setFrameShape(QFrame::NoFrame);
    details->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    details->document()->setDocumentMargin(0);
    details->viewport()->setAutoFillBackground(false);
    details->setFocusPolicy(Qt::ClickFocus);
    details->setMinimumHeight(0);
    details->hide();
    details->installEventFilter(this);
}

void TreeFoot::ShowDetails(bool show)
{
    details->setVisible(show);
}

void TreeFoot::SetNames(const QString& name, const QString& promptText)
{
    details->setAccessibleName(name);
    prompt = promptText;
    highestText = promptText;
}

void TreeFoot::ShowPrompt(bool show)
{
    details->setPlaceholderText(show ? prompt : QString());
}

bool TreeFoot::SetDetails(const QString& text)
{
    if (details->toPlainText() == text)
        return false;
    details->setPlainText(text);
    // Tab does not stop at an empty text.
    details->setFocusPolicy(text.isEmpty() ? Qt::ClickFocus : Qt::StrongFocus);
    if (LineHeight(text, details->font()) <= LineHeight(highestText, details->font()))
        return false;
    highestText = text;
    return true;
}

void TreeFoot::SetNotice(const QString& text, const QString& commandText, std::function<void()> act)
{
    pressed = std::move(act);
    notice->setText(text);
    command->setText(commandText);
    notice->setVisible(!text.isEmpty());
    command->setVisible(!text.isEmpty() && !commandText.isEmpty());
}

void TreeFoot::FollowInTabOrder(QWidget& view)
{
    QWidget::setTabOrder(&view, command);
    QWidget::setTabOrder(command, details);
}

int TreeFoot::NoticeHeight() const
{
    if (notice->isHidden())
        return 0;
    return std::max(notice->sizeHint().height(), command->isHidden() ? 0 : command->sizeHint().height()) +
           marginAbove;
}

int TreeFoot::HeightIn(int treeHeight) const
{
    const int margins = marginAbove + marginBelow;
    int height = NoticeHeight();
    if (!details->isHidden()) {
        const qreal line = LineHeight(highestText, details->font());
        const int lines =
            std::clamp(static_cast<int>((treeHeight / heightShare - margins) / line), 1, mostLines);
        // The text shows a line only where there is one more pixel, and otherwise a scroll bar.
        height += static_cast<int>(std::ceil(lines * line)) + 1;
    }
    return height == 0 ? 0 : std::clamp(height + margins, 0, std::max(0, treeHeight));
}

bool TreeFoot::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        update();
    return QWidget::eventFilter(watched, event);
}

/// The tree's frame is the upper edge.
void TreeFoot::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const skins::SkinColors& colors = skins::CurrentColors();
    pixmill::PaintFrame(painter, rect().adjusted(0, -1, 0, 0), pixmill::ToQt(colors.tableOutline), 1);
    if (details->hasFocus())
        pixmill::PaintFrame(painter, rect(), pixmill::ToQt(colors.focus), focusFrame);
}

} // namespace zetui::controls
