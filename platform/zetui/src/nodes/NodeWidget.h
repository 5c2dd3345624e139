#pragma once

#include <QWidget>

namespace zetui::ui {

/// The widget of a node that brings none of its own: drawn by `UI_Draw`, its keys to `UI_DoKeyboardEvent`.
class NodeWidget : public QWidget
{
  public:
    NodeWidget();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace zetui::ui
