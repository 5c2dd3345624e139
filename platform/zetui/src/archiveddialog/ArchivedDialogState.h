#pragma once

#include <memory>
#include <optional>
#include <string>

#include <QPointer>
#include <QSize>

#include <zetui/archiveddialog/UI_ArchivedDialog.h>

#include "archiveddialog/DialogWindow.h"
#include "archiveddialog/RememberedControls.h"

class QEventLoop;

namespace zetui::ui {

class ParentWindowLock;

struct UI_ArchivedDialog::ArchivedState
{
    explicit ArchivedState(const std::string& archiveName);
    ~ArchivedState();

    const pixmill::SupplierInterface* supplier = nullptr;
    WindowVariant parent;
    NodeFactory factory;
    /// Null when Qt has deleted it with the parent's window.
    QPointer<DialogWindow> window;
    utility::IntrusivePtr<UI_SubView> root;
    utility::IntrusivePtr<controls::UI_TextButton> okButton, cancelButton;
    utility::IntrusivePtr<UI_Node> firstFocus;
    /// Only while the dialog is modal.
    std::unique_ptr<ParentWindowLock> parentLock;
    QEventLoop* loop = nullptr;
    bool modeless = false, resizable = true;
    bool placed = false;
    RememberedControls remembered;
    bool restored = false;
    QSize reportedSize{-1, -1};
    std::optional<Response> closedWith;
    Response result = dialogs::UI_DialogViewContainer::kCancel;

    void MakeWindow(const std::wstring& title, bool hasTitleBar, PointF origin);
    void FitToTexts() const;
    /// The OK and the cancel button go without, because Return and Escape press them.
    void GiveMnemonics() const;
    void Show();
    void Hide();
};

} // namespace zetui::ui
