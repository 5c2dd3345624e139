#include "dialogs/ProgressWindow.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <utility>

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>
#include <QVBoxLayout>
#include <zetcore/config/Localizer.h>

#include "dialogs/HeldKeys.h"
#include "pixmill/LocalizedText.h"
#include "pixmill/QtConversions.h"

namespace zetui::dialogs {

namespace {

constexpr int windowWidth = 460;
constexpr int margin = 20;
constexpr int barHeight = 6;
constexpr std::chrono::milliseconds frameTime{33};
/// The bar's own total, whatever the counts' total is. Rounding to one total and then to another would move
/// the bar back.
constexpr int barSteps = 100'000;

} // namespace

PathLabel::PathLabel(QWidget* parent) : QLabel(parent)
{
    setTextFormat(Qt::PlainText);
    // The label keeps a line's height while it is empty, so that nothing jumps.
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

void PathLabel::SetPath(const QString& path, const QString& end)
{
    endLength = end.size();
    setText(path + end);
}

QString PathLabel::ShownText() const
{
    const QString all = text();
    const QString end = all.right(endLength);
    const int room = contentsRect().width() - fontMetrics().horizontalAdvance(end);
    return fontMetrics().elidedText(all.chopped(endLength), Qt::ElideMiddle, room) + end;
}

QSize PathLabel::sizeHint() const
{
    return {fontMetrics().horizontalAdvance(text()), fontMetrics().height()};
}

QSize PathLabel::minimumSizeHint() const
{
    return {0, fontMetrics().height()};
}

bool PathLabel::event(QEvent* event)
{
    if (event->type() != QEvent::ToolTip)
        return QLabel::event(event);
    const bool cut = ShownText() != text();
    QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                       cut ? pixmill::PlainForTooltip(pixmill::ToWide(text())) : QString(), this);
    return true;
}

void PathLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(),
                     static_cast<int>(Qt::AlignVCenter | Qt::TextSingleLine |
                                      QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft)),
                     ShownText());
}

ProgressWindow::ProgressWindow(QWidget* parent, const QString& title, bool canBeCancelled)
    : QDialog(parent), text(new QLabel(this)), extraText(new PathLabel(this)), bar(new QProgressBar(this)),
      count(new QLabel(this)), cancellable(canBeCancelled)
{
    setWindowTitle(title);
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    setWindowFlag(Qt::WindowCloseButtonHint, cancellable);

    text->setTextFormat(Qt::PlainText);
    text->setWordWrap(true);
    text->hide();
    count->setTextFormat(Qt::PlainText);
    count->setForegroundRole(QPalette::PlaceholderText);
    bar->setTextVisible(false);
    bar->setFixedHeight(barHeight);
    bar->setAccessibleName(title);
    ShowPosition();

    auto* const lines = new QVBoxLayout(this);
    lines->setContentsMargins(margin, margin, margin, margin - 4);
    lines->setSpacing(10);
    lines->addWidget(text);
    lines->addWidget(extraText);
    lines->addWidget(bar);
    auto* const lastLine = new QHBoxLayout;
    lastLine->setContentsMargins(0, 4, 0, 0);
    lastLine->addWidget(count, 1);
    if (cancellable) {
        auto* const cancel = new QPushButton(pixmill::LocalizedText("$$$/zetui/Dialog/Cancel=Cancel"), this);
        // The Return that has started all this must not end it.
        new HeldAnswerFilter(cancel);
        cancel->setMinimumSize(kDialogButtonWidth, kDialogButtonHeight);
        connect(cancel, &QPushButton::clicked, this, [this] { reject(); });
        lastLine->addWidget(cancel);
        cancel->setFocus();
    }
    lines->addLayout(lastLine);
    FitHeight();

    connect(&animation, &QTimer::timeout, bar, QOverload<>::of(&QWidget::update));
}

void ProgressWindow::SetText(const QString& newText)
{
    if (text->text() == newText)
        return;
    text->setText(newText);
    text->setVisible(!newText.isEmpty());
    FitHeight();
}

void ProgressWindow::FitHeight()
{
    const int width = std::max(windowWidth, layout()->totalMinimumSize().width());
    setFixedSize(width, layout()->totalHeightForWidth(width) > 0 ? layout()->totalHeightForWidth(width)
                                                                 : layout()->totalSizeHint().height());
}

void ProgressWindow::SetExtraText(const QString& path, const QString& end)
{
    extraText->SetPath(path, end);
}

void ProgressWindow::SetProgress(unsigned long long progress, unsigned long long newTotal)
{
    total = newTotal;
    position.Move(progress, total);
    if (total == 0) {
        bar->setRange(0, 0);
        count->clear();
        if (!animation.isActive())
            animation.start(frameTime);
        return;
    }
    ShowPosition();
    ShowCount(progress);
}

void ProgressWindow::Fill()
{
    position.Fill();
    ShowPosition();
    if (total > 0)
        ShowCount(total);
}

void ProgressWindow::ShowPosition()
{
    animation.stop();
    bar->setRange(0, barSteps);
    bar->setValue(static_cast<int>(std::lround(position.Part() * barSteps)));
}

void ProgressWindow::ShowCount(unsigned long long progress)
{
    count->setText(pixmill::DisplayLines(zetcore::config::Localizer::Get().Localize(
        "$$$/zetui/Progress/Count=@0 of @1", {std::to_string(progress), std::to_string(total)})));
}

bool ProgressWindow::TakeCancelled()
{
    return std::exchange(cancelled, false);
}

void ProgressWindow::reject()
{
    cancelled = cancelled || cancellable;
}

void ProgressWindow::closeEvent(QCloseEvent* event)
{
    event->ignore();
    reject();
}

} // namespace zetui::dialogs
