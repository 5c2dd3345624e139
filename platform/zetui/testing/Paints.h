#pragma once

#include <QEvent>
#include <QObject>

namespace zetui {

/// Counts what is painted.
class Paints : public QObject
{
  public:
    bool eventFilter(QObject*, QEvent* event) override
    {
        count += event->type() == QEvent::Paint;
        return false;
    }
    int count = 0;
};

} // namespace zetui
