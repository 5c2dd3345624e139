#include "application/QtMainThread.h"

#include <chrono>

#include <QCoreApplication>
#include <QEvent>
#include <QThread>

#include "application/HandlerErrors.h"

namespace zetui::ui {

namespace {

/// The limit leaves time for input and drawing, even when calls go on posting others.
constexpr std::chrono::milliseconds oneTurn{20};

QEvent::Type WakeEventType()
{
    static const auto type = static_cast<QEvent::Type>(QEvent::registerEventType());
    return type;
}

} // namespace

/// Receives the events that `Wake` posts. At most one is under way.
class QtMainThread::Receiver : public QObject
{
  public:
    void Post()
    {
        if (!posted.exchange(true))
            QCoreApplication::postEvent(this, new QEvent(WakeEventType()));
    }

    bool event(QEvent* event) override
    {
        if (event->type() != WakeEventType())
            return QObject::event(event);
        posted = false;
        CallFromToolkit([] { zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::now() + oneTurn); });
        if (zetcore::threads::HasQueuedCalls())
            Post();
        return true;
    }

  private:
    std::atomic<bool> posted{false};
};

QtMainThread::QtMainThread() : receiver(std::make_unique<Receiver>()) {}

QtMainThread::~QtMainThread() = default;

bool QtMainThread::CanRun() const
{
    return QThread::currentThread() == receiver->thread();
}

void QtMainThread::Run(std::chrono::steady_clock::time_point deadline)
{
    zetcore::threads::RunQueuedCalls(deadline);
}

void QtMainThread::Wake()
{
    receiver->Post();
}

} // namespace zetui::ui
