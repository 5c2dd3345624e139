#include <zetui/dialogs/UI_ProgressDialog.h>

#include <chrono>
#include <utility>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/threads/MainThread.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialogs/Patience.h"
#include "dialogs/PostedCalls.h"

namespace zetui::dialogs {

using zetcore::debug::FaultDelay;

namespace {

/// The limit keeps a modal phase from being held up by calls that go on posting others.
constexpr std::chrono::milliseconds postedCallsLimit{50};
/// The longest wait for posted calls in the place of a presentation that does not wait for them. The user's
/// cancelling is noticed within this time.
constexpr std::chrono::milliseconds longestWait{20};

} // namespace

UI_ProgressDialog::UI_ProgressDialog(const pixmill::SupplierInterface*, const std::string& windowTitle,
                                     const std::string& firstText, ui::WindowVariant parentWindow,
                                     bool indeterminate, bool canBeCancelled, bool closesWhenFull)
    : parent(parentWindow), title(windowTitle), text(firstText), cancellable(canBeCancelled),
      closeWhenFull(closesWhenFull), hasProgress(indeterminate), patience(std::make_unique<Patience>())
{}

UI_ProgressDialog::~UI_ProgressDialog()
{
    Hide();
}

void UI_ProgressDialog::SetExtraText(const std::string& newText)
{
    zetcore::threads::AssertMainThread();
    if (extraText == newText)
        return;
    extraText = newText;
    patience->Restart(Patience::Clock::now());
    if (shown)
        shown->SetExtraText(extraText);
}

void UI_ProgressDialog::SetPatience(std::chrono::seconds after,
                                    std::function<std::string(std::chrono::seconds)> words)
{
    zetcore::threads::AssertMainThread();
    patience->Set(after, std::move(words));
    if (shown)
        shown->SetExtraText(extraText);
}

void UI_ProgressDialog::SetProgress(unsigned long long newProgress, unsigned long long newTotal,
                                    const std::string& newText)
{
    zetcore::threads::AssertMainThread();
    hasProgress = true;
    progress = newProgress;
    total = newTotal;
    text = newText;
    if (shown)
        shown->SetProgress(progress, total, text);
    if (closeWhenFull && total > 0 && progress >= total)
        PostClose();
}

void UI_ProgressDialog::UI_Show(bool show)
{
    zetcore::threads::AssertMainThread();
    if (!show) {
        Hide();
        return;
    }
    if (visible)
        return;
    closedWith.reset();
    if (!shown)
        shown = GetPresentation()->CreateProgress(parent);
    visible = true;
    patience->Restart(Patience::Clock::now());
    shown->Show(title, text, cancellable);
    if (!extraText.empty())
        shown->SetExtraText(extraText);
    if (hasProgress)
        shown->SetProgress(progress, total, text);
}

bool UI_ProgressDialog::UI_IsShown() const
{
    return visible;
}

void UI_ProgressDialog::BeginModal()
{
    zetcore::threads::AssertMainThread();
    UI_Show(true);
}

void UI_ProgressDialog::EndModal()
{
    zetcore::threads::AssertMainThread();
    FinishClosing();
    // The work of the modal phase is done, because nobody has cancelled it before.
    FillBar();
    Hide();
}

void UI_ProgressDialog::ModalDuring()
{
    zetcore::threads::AssertMainThread();
    if (!visible)
        return;
    const utility::IntrusivePtr<UI_ProgressDialog> self(this);
    zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::now() + postedCallsLimit);
    ProcessEvents(false);
    FinishClosing();
}

void UI_ProgressDialog::PostClose()
{
    zetcore::threads::AssertMainThread();
    Close(UI_DialogViewContainer::kOK);
}

UI_Dialog::Response UI_ProgressDialog::RunModal()
{
    zetcore::threads::AssertMainThread();
    const utility::IntrusivePtr<UI_ProgressDialog> self(this);
    UI_Show(true);
    while (!closedWith) {
        ProcessEvents(true);
        if (!closedWith && !(shown && shown->RunsTheQueue()))
            WaitForPostedCalls(longestWait);
    }
    const Response response = *closedWith;
    FinishClosing();
    return response;
}

void UI_ProgressDialog::Close(Response response)
{
    if (visible && !closedWith)
        closedWith = response;
}

void UI_ProgressDialog::ProcessEvents(bool wait)
{
    if (!shown)
        return;
    struct Guard
    {
        explicit Guard(int& depth) : count(depth) { ++count; }
        ~Guard() { --count; }
        int& count;
    } guard(processing);
    if (shown->ProcessEvents(wait))
        Close(UI_DialogViewContainer::kCancel);
    ShowPatience();
}

void UI_ProgressDialog::ShowPatience()
{
    // An empty extra text says nothing whose duration could be told.
    if (!visible || closedWith || extraText.empty())
        return;
    if (const auto words = patience->Ask(Patience::Clock::now() + FaultDelay("dialog.patience")))
        shown->SetPatience(extraText, *words);
}

void UI_ProgressDialog::FinishClosing()
{
    if (!closedWith || !visible || processing > 0)
        return;
    const Response response = *closedWith;
    FillBar();
    Hide();
    CallPostClose(response);
}

void UI_ProgressDialog::FillBar()
{
    if (visible && closedWith != UI_DialogViewContainer::kCancel)
        shown->Finish();
}

void UI_ProgressDialog::Hide()
{
    if (visible) {
        visible = false;
        shown->Hide();
    }
    if (processing == 0)
        shown.reset();
}

} // namespace zetui::dialogs
