#pragma once

#include <atomic>
#include <memory>

#include <QObject>

#include <zetcore/threads/MainThread.h>

namespace zetui::ui {

/// Runs the main thread's queue in Qt's event loop, whoever runs that loop. It is made on the main thread,
/// and its last owner lets it go there.
class QtMainThread : public zetcore::threads::MainThreadAdaptor
{
  public:
    QtMainThread();
    ~QtMainThread() override;

    bool CanRun() const override;
    void Run(std::chrono::steady_clock::time_point deadline) override;
    void Wake() override;

  private:
    class Receiver;
    std::unique_ptr<Receiver> receiver;
};

} // namespace zetui::ui
