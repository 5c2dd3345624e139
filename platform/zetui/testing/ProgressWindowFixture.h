#pragma once

#include <vector>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <zetui/dialogs/UI_ProgressDialog.h>
#include <zetui/utility/IntrusivePtr.h>

#include "dialogs/QtProgress.h"
#include "testing/WindowsFixture.h"

namespace zetui::dialogs {

class ProgressInAWindow : public WindowsFixture
{
  protected:
    static utility::IntrusivePtr<UI_ProgressDialog> Make(bool indeterminate = false, bool cancellable = true,
                                                         ui::WindowVariant parent = {})
    {
        return utility::MakeIntrusive<UI_ProgressDialog>(nullptr, "Scanning", "", parent, indeterminate,
                                                         cancellable, false);
    }
    static ProgressWindow* Window()
    {
        for (QWidget* const widget : QApplication::topLevelWidgets())
            if (auto* const window = dynamic_cast<ProgressWindow*>(widget))
                if (window->isVisible())
                    return window;
        return nullptr;
    }
    static QPushButton* CancelButton() { return Window()->findChild<QPushButton*>(); }
    static QProgressBar* Bar() { return Window()->findChild<QProgressBar*>(); }
    static double BarPart() { return static_cast<double>(Bar()->value()) / Bar()->maximum(); }
    static PathLabel* Extra()
    {
        for (QLabel* const label : Window()->findChildren<QLabel*>())
            if (auto* const path = dynamic_cast<PathLabel*>(label))
                return path;
        return nullptr;
    }
    static QLabel* Count()
    {
        for (QLabel* const label : Window()->findChildren<QLabel*>())
            if (label->foregroundRole() == QPalette::PlaceholderText)
                return label;
        return nullptr;
    }
    using Responses = std::vector<UI_Dialog::Response>;
    /// The responses with which the dialog closes.
    Responses responses;
    void Listen(UI_ProgressDialog& dialog)
    {
        dialog.SetPostCloseCallback([this](UI_Dialog::Response response) {
            responses.push_back(response);
            return false;
        });
    }
};

} // namespace zetui::dialogs
