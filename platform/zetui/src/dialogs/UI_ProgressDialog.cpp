#include <zetui/dialogs/UI_ProgressDialog.h>

#include <chrono>

#include <zetcore/threads/MainThread.h>
#include <zetui/utility/IntrusivePtr.h>

namespace zetui::dialogs {

namespace {

/// So that calls which go on posting others cannot keep a modal phase from its work.
constexpr std::chrono::milliseconds postedCallsLimit{50};

} // namespace

UI_ProgressDialog::UI_ProgressDialog(const pixmill::SupplierInterface*, const std::string& windowTitle,
                                     const std::string& firstText, ui::WindowVariant parentWindow,
                                     bool indeterminate, bool canBeCancelled, bool closesWhenFull)
    : parent(parentWindow), title(windowTitle), text(firstText), cancellable(canBeCancelled),
      closeWhenFull(closesWhenFull), hasProgress(indeterminate)
{}

UI_ProgressDialog::~UI_ProgressDialog()
{
    Hide();
}

void UI_ProgressDialog::SetExtraText(const std::string& newText)
{
    extraText = newText;
    if (shown)
        shown->SetExtraText(extraText);
}

void UI_ProgressDialog::SetProgress(unsigned long long newProgress, unsigned long long newTotal,
                                    const std::string& newText)
{
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
    UI_Show(true);
}

void UI_ProgressDialog::EndModal()
{
    FinishClosing();
    Hide();
}

void UI_ProgressDialog::ModalDuring()
{
    if (!visible)
        return;
    const utility::IntrusivePtr<UI_ProgressDialog> self(this);
    zetcore::threads::RunQueuedCalls(std::chrono::steady_clock::now() + postedCallsLimit);
    ProcessEvents(false);
    FinishClosing();
}

void UI_ProgressDialog::PostClose()
{
    Close(UI_DialogViewContainer::kOK);
}

UI_Dialog::Response UI_ProgressDialog::RunModal()
{
    const utility::IntrusivePtr<UI_ProgressDialog> self(this);
    UI_Show(true);
    while (!closedWith)
        ProcessEvents(true);
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
}

void UI_ProgressDialog::FinishClosing()
{
    if (!closedWith || !visible || processing > 0)
        return;
    const Response response = *closedWith;
    Hide();
    CallPostClose(response);
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
