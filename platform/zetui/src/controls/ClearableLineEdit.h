#pragma once

#include <QLineEdit>

namespace zetui::controls {

/// A line of text with a button behind it that empties it, as the user would by deleting. Escape does so,
/// too.
class ClearableLineEdit : public QLineEdit
{
  public:
    ClearableLineEdit();
    /// Shows the button where there is something to clear.
    void UpdateClearButton();
    const QAction* ClearAction() const noexcept { return clear; }

  protected:
    /// Escape empties the line. In an empty line it is the window's.
    void keyPressEvent(QKeyEvent* event) override;

  private:
    /// Deletes the text as by typing, so that the user can undo it. Then the change is complete.
    void Clear();

    QAction* clear;
};

/// A field with a magnifier in front. A menu at the magnifier has the latest searches.
class SearchLineEdit : public ClearableLineEdit
{
  public:
    explicit SearchLineEdit(bool withMenu);
    /// The latest search comes first. Empty and repeated ones are not kept.
    void Remember(const QString& text);
    const QStringList& Remembered() const noexcept { return searches; }

  private:
    void ShowMenu();

    QAction* magnifier;
    QStringList searches;
};

} // namespace zetui::controls
