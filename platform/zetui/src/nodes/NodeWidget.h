#pragma once

#include <QWidget>

namespace zetui::ui {

/// The widget of a node that brings none of its own. `UI_Draw` draws it, and `UI_DoKeyboardEvent` gets its
/// keys.
class NodeWidget : public QWidget
{
  public:
    NodeWidget();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
};

} // namespace zetui::ui
