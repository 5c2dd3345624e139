#pragma once

#include <functional>
#include <vector>

#include <QDialog>

namespace zetui::ui {

/// The window of an archived dialog. It decides nothing: what the user does goes to the functions.
class DialogWindow : public QDialog
{
  public:
    explicit DialogWindow(QWidget* parent);

    /// Called for Return, unless the control with the focus takes the key, as buttons do.
    std::function<void()> confirmed;
    /// Called for Escape and for the window's close button.
    std::function<void()> cancelled;
    std::function<void()> sizeChanged;

    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
};

/// The widgets of nodes below this one that Tab stops at, in reading order: from the top down, and in a row
/// from left to right.
std::vector<QWidget*> ReadingOrder(const QWidget& parent);
void ArrangeTabOrder(const QWidget& parent);

} // namespace zetui::ui
