#pragma once

#include <functional>

#include <QObject>

namespace bench {

/// Tells when a widget has been painted: that is, when the repaint of its whole window is done. It needs the
/// application object. Main thread.
class PaintWatch : public QObject
{
  public:
    using IsWatched = std::function<bool(const QObject&)>;
    /// `painted` is called from the event loop, for each repaint.
    explicit PaintWatch(IsWatched isWatched, std::function<void()> painted = {});
    ~PaintWatch() override;

    /// Makes the change and returns the milliseconds until the watched widget has been painted. Throws
    /// `std::runtime_error` when it is not painted in time.
    double MillisecondsUntilPainted(const std::function<void()>& change);

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void customEvent(QEvent* event) override;

  private:
    IsWatched isWatched;
    std::function<void()> painted;
    bool announced = false;
    int repaints = 0;
};

/// Handles everything that waits in the event loop, including postponed deletions.
void Settle();

} // namespace bench
