#pragma once

#include <string>

#include <zetui/Export.h>
#include <zetui/screen/WindowVariant.h>

namespace zetui::dialogs {

/// The system's dialogs to choose a file or folder. Main thread.
class ZETUI_API OS_NavigationDialog
{
  public:
    explicit OS_NavigationDialog(ui::WindowVariant parentWindow) : parent(parentWindow) {}
    virtual ~OS_NavigationDialog();
    void SetWindowTitle(const std::wstring& text) { title = text; }
    /// True when something was chosen.
    virtual bool RunModal() = 0;

  protected:
    ui::WindowVariant parent;
    std::wstring title;
};

class ZETUI_API OS_FolderChooserDialog : public OS_NavigationDialog
{
  public:
    using OS_NavigationDialog::OS_NavigationDialog;
    ~OS_FolderChooserDialog() override;
    bool RunModal() override;
    /// The chosen folder; empty when the user cancelled.
    const std::wstring& GetPath() const noexcept { return path; }

  private:
    std::wstring path;
};

} // namespace zetui::dialogs
