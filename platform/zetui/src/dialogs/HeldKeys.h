#pragma once

#include <QObject>

class QKeyEvent;

namespace zetui::dialogs {

/// True for a Return or an Escape that repeats because the user keeps it down. It was meant for what had the
/// focus when it went down, and must not answer what has come since.
bool IsHeldAnswer(const QKeyEvent& event);

/// Keeps such keys from a widget. It is the widget's child.
class HeldAnswerFilter : public QObject
{
  public:
    explicit HeldAnswerFilter(QObject* widget);
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace zetui::dialogs
