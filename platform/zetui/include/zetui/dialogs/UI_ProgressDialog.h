#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <zetui/Export.h>
#include <zetui/dialogs/ProgressPresentation.h>
#include <zetui/dialogs/UI_Dialog.h>
#include <zetui/pixmill/SupplierInterface.h>
#include <zetui/screen/WindowVariant.h>

namespace zetui::dialogs {

class Patience;

/// A progress bar with a title, a text, an extra text that changes, and a cancel button. Texts are UTF-8 and
/// shown as they are (no localising). The bar never goes back while the dialog is shown. A dialog that ends
/// without having been cancelled ends with a full bar. Main thread.
class ZETUI_API UI_ProgressDialog : public UI_Dialog
{
  public:
    /// With `indeterminate` it starts as a busy bar. With `cancellable` it has a cancel button. With
    /// `closeWhenFull` it closes itself when progress reaches the total.
    UI_ProgressDialog(const pixmill::SupplierInterface* supplier, const std::string& title,
                      const std::string& text, ui::WindowVariant parent, bool indeterminate, bool cancellable,
                      bool closeWhenFull);

    void SetExtraText(const std::string& text);
    /// When the extra text has stayed the same for longer than `after`, the function's text is shown behind
    /// it in brackets, asked anew each second with the time since the extra text changed. This goes on while
    /// the dialog runs modally or its `ModalDuring` is called; a stream that is no terminal shows none of it.
    /// Null ends it.
    void SetPatience(std::chrono::seconds after, std::function<std::string(std::chrono::seconds)> text);
    void SetProgress(unsigned long long progress, unsigned long long total, const std::string& text);

    void UI_Show(bool show) override;
    bool UI_IsShown() const override;
    void BeginModal() override;
    void EndModal() override;
    void ModalDuring() override;
    void PostClose() override;
    Response RunModal() override;

  protected:
    ~UI_ProgressDialog() override;

  private:
    void Close(Response response);
    void ProcessEvents(bool wait);
    void ShowPatience();
    void FinishClosing();
    void FillBar();
    void Hide();

    ui::WindowVariant parent;
    std::string title, text, extraText;
    bool cancellable, closeWhenFull;
    /// False until there is something to show in the bar.
    bool hasProgress;
    unsigned long long progress = 0, total = 0;
    std::unique_ptr<Patience> patience;
    std::unique_ptr<ProgressPresentation> shown;
    bool visible = false;
    /// The number of calls of the presentation that are under way. It must not be destroyed meanwhile.
    int processing = 0;
    std::optional<Response> closedWith;
};

} // namespace zetui::dialogs
