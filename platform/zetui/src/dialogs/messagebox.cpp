#include <zetui/dialogs/messagebox.h>

#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zetui/dialogs/ProgressPresentation.h>

namespace zetui::dialogs::messagebox {

namespace {

constexpr int knownButtons[] = {kOK, kCancel, kYes, kNo};

void Show(AlertKind kind, const std::wstring& title, const std::wstring& message, ui::WindowVariant parent)
{
    GetPresentation()->ShowAlert(kind, zetcore::string::UTF16to8(title), zetcore::string::UTF16to8(message),
                                 parent);
}

} // namespace

int Messagebox(const pixmill::SupplierInterface*, const std::wstring& title, const std::wstring& message,
               ui::WindowVariant parent, int buttonSet, int defaultButton, int icon)
{
    zetcore::threads::AssertMainThread();
    Question question{.title = zetcore::string::UTF16to8(title),
                      .message = zetcore::string::UTF16to8(message),
                      .icon = icon};
    int first = 0;
    for (const int button : knownButtons) {
        if ((buttonSet & button) == 0)
            continue;
        question.buttonSet |= button;
        first = first == 0 ? button : first;
        if (button == defaultButton)
            question.defaultButton = button;
    }
    // A box without a button could never be left.
    if (question.buttonSet == 0)
        question.buttonSet = first = kOK;
    if (question.defaultButton == 0)
        question.defaultButton = first;
    return GetPresentation()->Ask(question, parent);
}

void ShowNote(const pixmill::SupplierInterface*, const std::wstring& title, const std::wstring& message,
              ui::WindowVariant parent)
{
    zetcore::threads::AssertMainThread();
    Show(AlertKind::Note, title, message, parent);
}

void ShowCaution(const pixmill::SupplierInterface*, const std::wstring& title, const std::wstring& message,
                 ui::WindowVariant parent)
{
    zetcore::threads::AssertMainThread();
    Show(AlertKind::Caution, title, message, parent);
}

void ShowText(const std::wstring& title, const std::wstring& text, ui::WindowVariant parent)
{
    zetcore::threads::AssertMainThread();
    GetPresentation()->ShowText(zetcore::string::UTF16to8(title), zetcore::string::UTF16to8(text), parent);
}

} // namespace zetui::dialogs::messagebox
