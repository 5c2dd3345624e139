#pragma once

#include <QLineEdit>

namespace zetui::controls {

/// A line of text with a button behind it that empties it, as the user would by deleting.
class ClearableLineEdit : public QLineEdit
{
  public:
    ClearableLineEdit();
    /// Shows the button where there is something to clear.
    void UpdateClearButton();
    const QAction* ClearAction() const noexcept { return clear; }

  private:
    QAction* clear;
};

/// With a magnifier in front, and the searches of late in a menu there.
class SearchLineEdit : public ClearableLineEdit
{
  public:
    explicit SearchLineEdit(bool withMenu);
    /// The latest search comes first; empty and repeated ones are not kept.
    void Remember(const QString& text);
    const QStringList& Remembered() const noexcept { return searches; }

  private:
    void ShowMenu();

    QAction* magnifier;
    QStringList searches;
};

} // namespace zetui::controls
