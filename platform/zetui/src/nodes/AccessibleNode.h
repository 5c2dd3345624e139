#pragma once

#include <vector>

#include <QAccessibleWidget>

namespace zetui::ui {

/// A node's widget, as screen readers see it. Its description never says again what its name says.
class AccessibleNode : public QAccessibleWidget
{
  public:
    explicit AccessibleNode(QWidget* widget, QAccessible::Role role = QAccessible::Client);

    /// The object in the place of the parent widget; empty when the widget itself is the parent.
    QAccessibleInterface* parent() const override;
    QString text(QAccessible::Text kind) const override;
    /// Inside of what stands in for the parent, only that part can be seen.
    QRect rect() const override;

  protected:
    ~AccessibleNode() override;
};

/// A view that holds others. It tells of its visible children in the order in which people read them, which
/// is not always that of the layout archive.
class AccessibleView : public AccessibleNode
{
  public:
    explicit AccessibleView(QWidget* widget);

    int childCount() const override;
    QAccessibleInterface* child(int index) const override;
    int indexOfChild(const QAccessibleInterface* child) const override;

  protected:
    ~AccessibleView() override;

  private:
    std::vector<QWidget*> Children() const;
};

/// Lets screen readers see nodes like this.
void UseAccessibleNodes();

} // namespace zetui::ui
