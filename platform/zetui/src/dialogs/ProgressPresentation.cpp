#include <zetui/dialogs/ProgressPresentation.h>

#include <utility>

#include <zetcore/threads/MainThread.h>
#include <zetui/dialogs/TerminalPresentation.h>
#include <zetui/dialogs/messagebox.h>

namespace zetui::dialogs {

namespace {

std::shared_ptr<Presentation>& Installed()
{
    static std::shared_ptr<Presentation> presentation;
    return presentation;
}

} // namespace

ProgressPresentation::~ProgressPresentation() = default;

void ProgressPresentation::SetPatience(const std::string& extraText, const std::string& patience)
{
    SetExtraText(extraText + " (" + patience + ")");
}

void ProgressPresentation::Finish() {}

bool ProgressPresentation::RunsTheQueue() const
{
    return false;
}

Presentation::~Presentation() = default;

int Presentation::Ask(const Question& question, ui::WindowVariant parent)
{
    const bool alarming = question.icon == messagebox::kIconCaution || question.icon == messagebox::kIconStop;
    ShowAlert(alarming ? AlertKind::Caution : AlertKind::Note, question.title, question.message, parent);
    return question.defaultButton;
}

void Presentation::ShowText(const std::string& title, const std::string& text, ui::WindowVariant parent)
{
    ShowAlert(AlertKind::Note, title, text, parent);
}

std::wstring Presentation::ChooseFolder(const std::wstring&, ui::WindowVariant)
{
    return {};
}

std::shared_ptr<Presentation> GetPresentation()
{
    zetcore::threads::AssertMainThread();
    if (!Installed())
        Installed() = std::make_shared<TerminalPresentation>(stderr);
    return Installed();
}

void SetPresentation(std::shared_ptr<Presentation> presentation)
{
    zetcore::threads::AssertMainThread();
    Installed() = std::move(presentation);
}

} // namespace zetui::dialogs
