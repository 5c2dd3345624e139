#include "controls/AccessibleButton.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QKeySequence>
#include <QPushButton>

#include "application/AccessibleFactories.h"
#include "controls/ClearableLineEdit.h"
#include "controls/TextMeasure.h"
#include "nodes/NodeAccess.h"

namespace zetui::controls {

AccessibleButton::AccessibleButton(QAbstractButton& button)
    : AccessibleNode(&button, button.isCheckable() ? QAccessible::CheckBox : QAccessible::Button)
{}

AccessibleButton::~AccessibleButton() = default;

QAbstractButton& AccessibleButton::Button() const
{
    return static_cast<QAbstractButton&>(*widget());
}

QString AccessibleButton::text(QAccessible::Text kind) const
{
    if (kind == QAccessible::Name && Button().accessibleName().isEmpty())
        return WithoutMnemonic(Button().text());
    if (kind == QAccessible::Accelerator)
        return QKeySequence::mnemonic(Button().text()).toString(QKeySequence::NativeText);
    return AccessibleNode::text(kind);
}

QAccessible::State AccessibleButton::state() const
{
    QAccessible::State state = AccessibleNode::state();
    const QAbstractButton& button = Button();
    state.pressed = button.isDown();
    state.checkable = button.isCheckable();
    state.checked = button.isChecked();
    if (const auto* const checkbox = dynamic_cast<const QCheckBox*>(&button);
        checkbox && checkbox->checkState() == Qt::PartiallyChecked)
        state.checkStateMixed = true;
    const auto* const push = dynamic_cast<const QPushButton*>(&button);
    state.defaultButton = push && push->isDefault();
    return state;
}

QString AccessibleButton::ActionOf(const QAbstractButton& button)
{
    if (!button.isEnabled())
        return {};
    return button.isCheckable() ? toggleAction() : pressAction();
}

void AccessibleButton::Click(QAbstractButton& button)
{
    QMetaObject::invokeMethod(&button, &QAbstractButton::click,
                              button.isCheckable() ? Qt::DirectConnection : Qt::QueuedConnection);
}

QStringList AccessibleButton::actionNames() const
{
    QStringList names = AccessibleNode::actionNames();
    if (const QString action = ActionOf(Button()); !action.isEmpty())
        names.prepend(action);
    return names;
}

void AccessibleButton::doAction(const QString& name)
{
    if (name == ActionOf(Button()))
        Click(Button());
    else
        AccessibleNode::doAction(name);
}

QStringList AccessibleButton::keyBindingsForAction(const QString& name) const
{
    const QString key = text(QAccessible::Accelerator);
    return name == ActionOf(Button()) && !key.isEmpty() ? QStringList(key) : QStringList();
}

void UseAccessibleButtons()
{
    ui::UseAccessibleFactory([](const QString&, QObject* object) -> QAccessibleInterface* {
        auto* const button = dynamic_cast<QAbstractButton*>(object);
        const bool ours = button && (ui::NodeAccess::NodeOf(button) ||
                                     dynamic_cast<ClearableLineEdit*>(button->parentWidget()));
        return ours ? new AccessibleButton(*button) : nullptr;
    });
}

} // namespace zetui::controls
