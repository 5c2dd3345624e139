#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <zetui/dialogs/ProgressPresentation.h>

namespace zetaudiopluginhostui {

/// Stands in front of the presentation in use while it lives. It answers questions and choices as the test
/// says, and writes alerts down. Progress dialogs are the real ones.
class AnsweringPresentation
{
  public:
    AnsweringPresentation()
    {
        const auto real = zetui::dialogs::GetPresentation();
        zetui::dialogs::SetPresentation(std::make_shared<Front>(*this, real));
        replaced = real;
    }
    ~AnsweringPresentation() { zetui::dialogs::SetPresentation(replaced); }
    AnsweringPresentation(const AnsweringPresentation&) = delete;
    AnsweringPresentation& operator=(const AnsweringPresentation&) = delete;

    struct Alert
    {
        std::string title, message;
    };
    std::vector<Alert> alerts;
    /// The windows with long texts.
    std::vector<Alert> texts;
    std::vector<zetui::dialogs::Question> questions;
    /// The titles of the folder choosers.
    std::vector<std::wstring> choosers;
    /// The parents of all windows that were shown, in order.
    std::vector<zetui::ui::WindowVariant> parents;
    int progressDialogs = 0;
    int answer = 0;
    std::wstring chosenFolder;
    /// Called while the chooser is open.
    std::function<void()> onChoose;
    /// Called when a progress dialog comes.
    std::function<void()> onProgress;
    /// Called for each alert.
    std::function<void()> onAlert;

  private:
    class Front : public zetui::dialogs::Presentation
    {
      public:
        Front(AnsweringPresentation& record, std::shared_ptr<zetui::dialogs::Presentation> realOne)
            : owner(record), real(std::move(realOne))
        {}
        std::unique_ptr<zetui::dialogs::ProgressPresentation>
        CreateProgress(zetui::ui::WindowVariant parent) override
        {
            ++owner.progressDialogs;
            owner.parents.push_back(parent);
            if (owner.onProgress)
                owner.onProgress();
            return real->CreateProgress(parent);
        }
        void ShowAlert(zetui::dialogs::AlertKind, const std::string& title, const std::string& message,
                       zetui::ui::WindowVariant parent) override
        {
            owner.alerts.push_back({title, message});
            owner.parents.push_back(parent);
            if (owner.onAlert)
                owner.onAlert();
        }
        int Ask(const zetui::dialogs::Question& question, zetui::ui::WindowVariant parent) override
        {
            owner.parents.push_back(parent);
            owner.questions.push_back(question);
            return owner.answer;
        }
        void ShowText(const std::string& title, const std::string& text,
                      zetui::ui::WindowVariant parent) override
        {
            owner.texts.push_back({title, text});
            owner.parents.push_back(parent);
        }
        std::wstring ChooseFolder(const std::wstring& title, zetui::ui::WindowVariant parent) override
        {
            owner.parents.push_back(parent);
            owner.choosers.push_back(title);
            if (owner.onChoose)
                owner.onChoose();
            return owner.chosenFolder;
        }

      private:
        AnsweringPresentation& owner;
        std::shared_ptr<zetui::dialogs::Presentation> real;
    };

    std::shared_ptr<zetui::dialogs::Presentation> replaced;
};

} // namespace zetaudiopluginhostui
