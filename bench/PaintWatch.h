#pragma once

#include <functional>

#include <QObject>

namespace bench {

/// Tells when a widget has been painted: when the whole repaint of its window that it was a part of is done.
/// Needs the application object; main thread.
class PaintWatch : public QObject
{
  public:
    using IsWatched = std::function<bool(const QObject&)>;
    /// `painted` is called from the event loop, for each repaint.
    explicit PaintWatch(IsWatched isWatched, std::function<void()> painted = {});
    ~PaintWatch() override;

    /// What passes from the change on until the watched widget has been painted. Throws `std::runtime_error`
    /// when it is not painted in time.
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

/// Handles what is waiting in the event loop, deletions put off included.
void Settle();

} // namespace bench
