#pragma once

#include "nodes/AccessibleNode.h"

class QAbstractButton;

namespace zetui::controls {

/// A button or checkbox as screen readers see it. What they do with it is a click to its handlers.
class AccessibleButton final : public ui::AccessibleNode
{
  public:
    explicit AccessibleButton(QAbstractButton& button);

    QString text(QAccessible::Text kind) const override;
    QAccessible::State state() const override;
    QStringList actionNames() const override;
    void doAction(const QString& name) override;
    QStringList keyBindingsForAction(const QString& name) const override;

    /// The action that this class has for a button: toggle it or press it. Empty for one that is disabled.
    static QString ActionOf(const QAbstractButton& button);
    /// Does that. A press is answered before its handler runs, because the handler may open a dialog.
    static void Click(QAbstractButton& button);

  private:
    ~AccessibleButton() override;
    QAbstractButton& Button() const;
};

/// Lets screen readers see the toolkit's buttons like this.
void UseAccessibleButtons();

} // namespace zetui::controls
