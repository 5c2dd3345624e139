#include "controls/PopupMenu.h"

#include <QMenu>

#include "application/HandlerErrors.h"
#include "pixmill/QtConversions.h"

namespace zetui::controls {

namespace {

/// The command is carried out when the menu has gone, because it may open windows of its own.
void AddTo(QMenu& popup, QWidget& owner, const UI_ContextMenu::Item& item)
{
    QAction* const action = popup.addAction(pixmill::ToQString(item.text));
    action->setEnabled(item.enabled);
    QObject::connect(
        action, &QAction::triggered, &owner,
        [chosen = item.chosen] {
            ui::CallFromToolkit([&chosen] {
                if (chosen)
                    chosen();
            });
        },
        Qt::QueuedConnection);
}

} // namespace

void UI_ContextMenu::AddCommand(const std::wstring& text, std::function<void()> chosen, bool enabled)
{
    items.push_back({text, enabled, std::move(chosen)});
}

void UI_ContextMenu::AddSeparator()
{
    if (!items.empty() && !items.back().text.empty())
        items.push_back({});
}

void ShowPopupMenu(QWidget& owner, const UI_ContextMenu& menu, const QPoint& onScreen, bool byKeyboard)
{
    if (menu.IsEmpty())
        return;
    auto* const popup = new QMenu(&owner);
    popup->setAttribute(Qt::WA_DeleteOnClose);
    for (const UI_ContextMenu::Item& item : menu.Items()) {
        if (item.text.empty())
            popup->addSeparator();
        else
            AddTo(*popup, owner, item);
    }
    popup->popup(onScreen);
    if (!byKeyboard)
        return;
    for (QAction* const action : popup->actions()) {
        if (action->isEnabled() && !action->isSeparator()) {
            popup->setActiveAction(action);
            break;
        }
    }
}

} // namespace zetui::controls
