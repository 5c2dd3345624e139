#pragma once

#include <chrono>

#include <QTimer>
#include <zetcore/threads/MainThread.h>

namespace zetui::dialogs {

/// Runs what is posted to the main thread for as long as it lives, in any loop of Qt. A host may have
/// registered an event loop that does not run meanwhile.
class QueuedCallsTimer
{
  public:
    QueuedCallsTimer()
    {
        QObject::connect(&timer, &QTimer::timeout, [] {
            // The limit leaves the window time, even when calls go on posting others.
            zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::now() +
                                             std::chrono::milliseconds(50));
        });
        timer.start(std::chrono::milliseconds(10));
    }

  private:
    QTimer timer;
};

} // namespace zetui::dialogs
