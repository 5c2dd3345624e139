#pragma once

#include <functional>

#include <QHeaderView>

namespace zetui::controls {

/// The titles of a tree. A column may keep its place: it cannot be dragged, and no other column can be
/// dragged past it.
class TreeHeader final : public QHeaderView
{
  public:
    /// True when the column with this index keeps its place.
    using KeepsPlace = std::function<bool(int column)>;
    TreeHeader(QWidget* parent, KeepsPlace keepsPlace);

  protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

  private:
    KeepsPlace keepsPlace;
};

} // namespace zetui::controls
