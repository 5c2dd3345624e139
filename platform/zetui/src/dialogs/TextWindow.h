#pragma once

#include <QDialog>

class QPlainTextEdit;

namespace zetui::dialogs {

/// A text that the user reads, selects and copies, of any length. Escape and the button close it.
class TextWindow : public QDialog
{
  public:
    TextWindow(QWidget* parent, const QString& title, const QString& text);
    QPlainTextEdit& Text() const noexcept { return *field; }

  private:
    QPlainTextEdit* field;
};

} // namespace zetui::dialogs
