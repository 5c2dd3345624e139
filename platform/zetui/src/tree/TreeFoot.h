#pragma once

#include <functional>

#include <QWidget>

class QLabel;
class QPlainTextEdit;
class QPushButton;

namespace zetui::controls {

/// The lines below a tree: what there is to say about the selected row, and above it a notice with a button.
/// The user can select and copy the text, and scroll it where it is longer than its room.
class TreeFoot final : public QWidget
{
  public:
    TreeFoot();

    void ShowDetails(bool show);
    /// The name is for screen readers. The prompt may stand there while there is no text.
    void SetNames(const QString& name, const QString& prompt);
    void ShowPrompt(bool show);
    /// True when the lines have become higher, so that the foot must be placed again.
    bool SetDetails(const QString& details);
    /// An empty text takes the notice away.
    void SetNotice(const QString& notice, const QString& command, std::function<void()> pressed);
    /// Comes behind the view in the Tab order. To be called when both are in one window.
    void FollowInTabOrder(QWidget& view);
    /// The height that it takes of a tree that is so high. The text has three lines there, and fewer in a low
    /// tree. 0 when the foot has neither text nor notice.
    int HeightIn(int treeHeight) const;

    bool eventFilter(QObject* watched, QEvent* event) override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    int NoticeHeight() const;

    QLabel* notice;
    QPushButton* command;
    QPlainTextEdit* details;
    QString prompt;
    /// The text with the highest line so far. The foot's height follows it, and does not change with each
    /// row.
    QString highestText;
    std::function<void()> pressed;
};

} // namespace zetui::controls
