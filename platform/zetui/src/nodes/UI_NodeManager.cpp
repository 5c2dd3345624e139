#include <zetui/nodes/UI_NodeManager.h>

#include <algorithm>
#include <memory>
#include <vector>

#include <QApplication>
#include <QKeyEvent>
#include <QObject>
#include <QPointer>

#include <zetcore/threads/MainThread.h>

#include "application/HandlerErrors.h"
#include "nodes/KeyEvents.h"
#include "nodes/NodeAccess.h"

namespace zetui::ui {

KeyboardEventFilter::~KeyboardEventFilter() = default;

struct UI_NodeManager::State : public QObject
{
    struct Entry
    {
        KeyboardEventFilter* filter;
        bool onlyWhenFocused;
    };

    static UI_NodeManager& TheOne()
    {
        static UI_NodeManager manager;
        return manager;
    }

    bool eventFilter(QObject* watched, QEvent* event) override;
    bool Ask(QKeyEvent& event);
    bool IsRegistered(const KeyboardEventFilter* filter) const;
    /// The application object may be younger than the first filter, and may be replaced.
    void WatchApplication();

    std::vector<Entry> filters;
    QPointer<QCoreApplication> watchedApplication;
};

void UI_NodeManager::State::WatchApplication()
{
    if (watchedApplication == QCoreApplication::instance())
        return;
    if (watchedApplication)
        watchedApplication->removeEventFilter(this);
    watchedApplication = QCoreApplication::instance();
    if (watchedApplication)
        watchedApplication->installEventFilter(this);
}

bool UI_NodeManager::State::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress || filters.empty() || QApplication::activePopupWidget())
        return false;
    // A key that nobody takes is offered to every parent in turn. Only the first time counts.
    const QObject* const first = QApplication::focusWidget()
                                     ? static_cast<QObject*>(QApplication::focusWidget())
                                     : static_cast<QObject*>(QApplication::activeWindow());
    if (!first || watched != first)
        return false;
    bool consumed = false;
    CallFromToolkit([&] { consumed = Ask(static_cast<QKeyEvent&>(*event)); });
    if (consumed)
        event->accept();
    return consumed;
}

bool UI_NodeManager::State::IsRegistered(const KeyboardEventFilter* filter) const
{
    return std::any_of(filters.begin(), filters.end(),
                       [filter](const Entry& entry) { return entry.filter == filter; });
}

bool UI_NodeManager::State::Ask(QKeyEvent& event)
{
    const KeyboardEvent key = KeyboardEventOf(event);
    const utility::IntrusivePtr<UI_Node> target(TheOne().GetFocusNode());
    // The filters are copied, because one may add and remove filters.
    const std::vector<Entry> asked(filters.rbegin(), filters.rend());
    for (const Entry& entry : asked) {
        if (!IsRegistered(entry.filter))
            continue;
        if (entry.onlyWhenFocused) {
            const auto* const node = dynamic_cast<const UI_Node*>(entry.filter);
            if (node && !node->UI_HasKeyboardFocus(true))
                continue;
        }
        if (entry.filter->UI_DoPreKeyboardEvent(target.get(), key))
            return true;
    }
    return false;
}

UI_NodeManager::UI_NodeManager() : state(std::make_unique<State>()) {}

UI_NodeManager::~UI_NodeManager() = default;

UI_NodeManager* UI_NodeManager::Get(bool forTests)
{
    zetcore::threads::AssertMainThread();
    UI_NodeManager& manager = State::TheOne();
    if (forTests)
        manager.state = std::make_unique<State>();
    manager.state->WatchApplication();
    return &manager;
}

void UI_NodeManager::AddKeyboardEventFilterNode(KeyboardEventFilter* filter, bool onlyWhenFocused)
{
    if (!filter)
        return;
    state->WatchApplication();
    state->filters.push_back({filter, onlyWhenFocused});
}

void UI_NodeManager::RemoveKeyboardEventFilterNode(KeyboardEventFilter* filter)
{
    // The filter's youngest registration goes, so that each adding has its removing.
    auto& filters = state->filters;
    const auto found = std::find_if(filters.rbegin(), filters.rend(),
                                    [filter](const auto& entry) { return entry.filter == filter; });
    if (found != filters.rend())
        filters.erase(std::next(found).base());
}

UI_Node* UI_NodeManager::GetFocusNode() const
{
    return NodeAccess::NearestNode(QApplication::focusWidget());
}

AddAndRemoveKeyboardEventFilterNode::AddAndRemoveKeyboardEventFilterNode(UI_NodeManager* nodeManager,
                                                                         KeyboardEventFilter* eventFilter,
                                                                         bool onlyWhenFocused)
    : manager(nodeManager), filter(eventFilter)
{
    manager->AddKeyboardEventFilterNode(filter, onlyWhenFocused);
}

AddAndRemoveKeyboardEventFilterNode::~AddAndRemoveKeyboardEventFilterNode()
{
    manager->RemoveKeyboardEventFilterNode(filter);
}

} // namespace zetui::ui
