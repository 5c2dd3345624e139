#include <zetui/controls/UI_ControlView.h>

#include <utility>
#include <vector>

#include <zetcore/threads/MainThread.h>
#include <zetui/skins/Skins.h>

namespace zetui::controls {

namespace {

using MessageFunctions = std::vector<ui::MessageFunction>;

void Add(MessageFunctions& functions, ui::MessageFunction function)
{
    if (function && *function)
        functions.push_back(std::move(function));
}

/// The functions are copied, because one of them may add others or drop the control.
void Send(const MessageFunctions functions, ui::UI_Message& message)
{
    for (const ui::MessageFunction& function : functions)
        (*function)(&message);
}

} // namespace

struct UI_ControlView::ControlState
{
    MessageFunctions changed, changedInteractively;
};

UI_ControlView::UI_ControlView(void* nativeWidget)
    : UI_SubView(nativeWidget), control(std::make_unique<ControlState>())
{}

UI_ControlView::~UI_ControlView() = default;

float UI_ControlView::DefaultTextSize()
{
    return ui::GetFontSize(0);
}

void UI_ControlView::NotifyWhenChanged(ui::MessageFunction function)
{
    zetcore::threads::AssertMainThread();
    Add(control->changed, std::move(function));
}

void UI_ControlView::NotifyWhenChangedInteractively(ui::MessageFunction function)
{
    zetcore::threads::AssertMainThread();
    Add(control->changedInteractively, std::move(function));
}

void UI_ControlView::SendChanged(ui::UI_Message& message)
{
    zetcore::threads::AssertMainThread();
    const utility::IntrusivePtr<UI_ControlView> kept(this);
    Send(control->changed, message);
}

void UI_ControlView::SendChangedInteractively(ui::UI_Message& message)
{
    zetcore::threads::AssertMainThread();
    const utility::IntrusivePtr<UI_ControlView> kept(this);
    Send(control->changedInteractively, message);
}

} // namespace zetui::controls
