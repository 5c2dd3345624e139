#pragma once

#include <string>

#include <QDialog>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>

#include "dialogs/BarPosition.h"

namespace zetui::dialogs {

/// The least size of a button of the toolkit's own dialogs.
inline constexpr int kDialogButtonWidth = 84;
inline constexpr int kDialogButtonHeight = 23;

/// One line: a path and what follows it. Where both do not fit, the path is shortened in its middle. Screen
/// readers get all of it.
class PathLabel : public QLabel
{
  public:
    explicit PathLabel(QWidget* parent);
    void SetPath(const QString& path, const QString& end);
    /// The text that is drawn at the present width.
    QString ShownText() const;
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

  protected:
    /// A shortened text is a tooltip as a whole.
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    /// The last characters of the text, which are never cut.
    qsizetype endLength = 0;
};

/// The window of a progress dialog. It does not close by itself, but notes that the user wants to cancel.
class ProgressWindow : public QDialog
{
  public:
    ProgressWindow(QWidget* parent, const QString& title, bool canBeCancelled);

    void SetText(const QString& text);
    void SetExtraText(const QString& path, const QString& end);
    /// A total of 0 is a busy bar.
    void SetProgress(unsigned long long progress, unsigned long long total);
    /// Makes the bar full, and the count where there is one.
    void Fill();
    /// True when the user asked to cancel since the last call.
    bool TakeCancelled();
    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void FitHeight();
    void ShowPosition();
    void ShowCount(unsigned long long progress);

    QLabel* text;
    PathLabel* extraText;
    QProgressBar* bar;
    QLabel* count;
    QTimer animation;
    BarPosition position;
    unsigned long long total = 0;
    const bool cancellable;
    bool cancelled = false;
};

} // namespace zetui::dialogs
