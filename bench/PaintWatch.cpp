#include "PaintWatch.h"

#include <chrono>
#include <stdexcept>

#include <QCoreApplication>
#include <QEvent>

namespace bench {

PaintWatch::PaintWatch(IsWatched watchedOne, std::function<void()> callback)
    : isWatched(std::move(watchedOne)), painted(std::move(callback))
{
    QCoreApplication::instance()->installEventFilter(this);
}

PaintWatch::~PaintWatch() = default;

bool PaintWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint && !announced && isWatched(*watched)) {
        // This event comes after the window's paint event, which has painted the last widget.
        announced = true;
        QCoreApplication::postEvent(this, new QEvent(QEvent::User), Qt::HighEventPriority);
    }
    return false;
}

void PaintWatch::customEvent(QEvent* /*event*/)
{
    announced = false;
    ++repaints;
    if (painted)
        painted();
}

double PaintWatch::MillisecondsUntilPainted(const std::function<void()>& change)
{
    using Clock = std::chrono::steady_clock;
    using Milliseconds = std::chrono::duration<double, std::milli>;
    constexpr std::chrono::seconds longest(60);
    const int before = repaints;
    const auto start = Clock::now();
    change();
    while (repaints == before) {
        QCoreApplication::processEvents();
        if (Clock::now() - start > longest)
            throw std::runtime_error("a change is not painted");
    }
    return Milliseconds(Clock::now() - start).count();
}

void Settle()
{
    QCoreApplication::processEvents();
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

} // namespace bench
