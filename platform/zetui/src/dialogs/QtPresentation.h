#pragma once

#include <memory>
#include <string>

#include <zetui/dialogs/ProgressPresentation.h>

namespace zetui::dialogs {

/// Dialogs in windows. There must be a `QApplication` while it is in use. Main thread.
class QtPresentation : public Presentation
{
  public:
    std::unique_ptr<ProgressPresentation> CreateProgress(ui::WindowVariant parent) override;
    void ShowAlert(AlertKind kind, const std::string& title, const std::string& message,
                   ui::WindowVariant parent) override;
    int Ask(const Question& question, ui::WindowVariant parent) override;
    void ShowText(const std::string& title, const std::string& text, ui::WindowVariant parent) override;
    std::wstring ChooseFolder(const std::wstring& title, ui::WindowVariant parent) override;

  private:
    /// The folder chooser opens here; empty before its first use.
    std::wstring lastFolder;
};

} // namespace zetui::dialogs
