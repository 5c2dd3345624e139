#pragma once

#include <atomic>
#include <memory>

#include <QObject>

#include <zetcore/threads/MainThread.h>

namespace zetui::ui {

/// The main thread's queue on Qt's event loop, whoever runs that loop. Made, and let go by its last owner, on
/// the main thread.
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
