#pragma once

#include <memory>

#include <zetui/dialogs/ProgressPresentation.h>

namespace zetaudiopluginmanager {

/// Hands everything on to another presentation and counts the cautions. The module shows one when something
/// could not be read or saved. Main thread.
class CautionCounter : public zetui::dialogs::Presentation
{
  public:
    explicit CautionCounter(std::shared_ptr<zetui::dialogs::Presentation> presentation);

    const std::shared_ptr<zetui::dialogs::Presentation>& Behind() const noexcept { return behind; }
    int Cautions() const noexcept { return cautions; }

    std::unique_ptr<zetui::dialogs::ProgressPresentation>
    CreateProgress(zetui::ui::WindowVariant parent) override;
    void ShowAlert(zetui::dialogs::AlertKind kind, const std::string& title, const std::string& message,
                   zetui::ui::WindowVariant parent) override;
    int Ask(const zetui::dialogs::Question& question, zetui::ui::WindowVariant parent) override;
    void ShowText(const std::string& title, const std::string& text,
                  zetui::ui::WindowVariant parent) override;
    std::wstring ChooseFolder(const std::wstring& title, zetui::ui::WindowVariant parent) override;

  private:
    std::shared_ptr<zetui::dialogs::Presentation> behind;
    int cautions = 0;
};

} // namespace zetaudiopluginmanager
