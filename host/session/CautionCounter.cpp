#include "session/CautionCounter.h"

#include <utility>

namespace zetaudiopluginmanager {

CautionCounter::CautionCounter(std::shared_ptr<zetui::dialogs::Presentation> presentation)
    : behind(std::move(presentation))
{}

std::unique_ptr<zetui::dialogs::ProgressPresentation>
CautionCounter::CreateProgress(zetui::ui::WindowVariant parent)
{
    return behind->CreateProgress(parent);
}

void CautionCounter::ShowAlert(zetui::dialogs::AlertKind kind, const std::string& title,
                               const std::string& message, zetui::ui::WindowVariant parent)
{
    if (kind == zetui::dialogs::AlertKind::Caution)
        ++cautions;
    behind->ShowAlert(kind, title, message, parent);
}

int CautionCounter::Ask(const zetui::dialogs::Question& question, zetui::ui::WindowVariant parent)
{
    return behind->Ask(question, parent);
}

void CautionCounter::ShowText(const std::string& title, const std::string& text,
                              zetui::ui::WindowVariant parent)
{
    behind->ShowText(title, text, parent);
}

std::wstring CautionCounter::ChooseFolder(const std::wstring& title, zetui::ui::WindowVariant parent)
{
    return behind->ChooseFolder(title, parent);
}

} // namespace zetaudiopluginmanager
