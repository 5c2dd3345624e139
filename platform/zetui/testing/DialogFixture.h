#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <zetcore/config/Localizer.h>
#include <zettesting/Patience.h>
#include <zetui/archiveddialog/UI_ArchivedDialog.h>
#include <zetui/utility/OS_ResourceManager.h>

#include "nodes/NodeAccess.h"
#include "testing/PrintRect.h"
#include "testing/ThisModule.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {

/// The dialog of the test archives: a long text, a checkbox and a field in a strip, a list, and buttons.
class TestDialog : public UI_ArchivedDialog
{
  public:
    explicit TestDialog(const utility::ResourceManager& resources, WindowVariant parent = {},
                        bool resizable = true, const std::string& name = "TestDialog")
        : UI_ArchivedDialog(nullptr, &resources, name, L"Title", parent, resizable, true, {}, {}, false, {})
    {
        SetOkButton(dynamic_cast<controls::UI_TextButton*>(GetNodeForID("OKButton").get()));
        SetCancelButton(dynamic_cast<controls::UI_TextButton*>(GetNodeForID("CancelButton").get()));
    }

    void UI_SizeChanged(const RectF& bounds) override
    {
        UI_ArchivedDialog::UI_SizeChanged(bounds);
        sizes.push_back(bounds);
    }

    using UI_ArchivedDialog::FitToTexts;

    QWidget* Window() const { return WidgetOf(GetRootView())->window(); }
    QWidget* Widget(const char* id) const { return WidgetOf(GetNodeForID(id).get()); }
    QWidget* Focus() const { return Window()->focusWidget(); }

    std::vector<RectF> sizes;
};

/// Runs dialogs and plays their user.
class DialogFixture : public WindowsFixture
{
  protected:
    using WindowsFixture::WindowsFixture;
    ~DialogFixture() override { zetcore::config::Localizer::Get().Reset(); }

    static constexpr int kStillOpen = 99;
    /// Runs the dialog and does this once it is open.
    static int Run(TestDialog& dialog, std::function<void()> whenOpen)
    {
        QTimer::singleShot(0, [&, whenOpen = std::move(whenOpen)] {
            EXPECT_TRUE(QTest::qWaitForWindowActive(dialog.Window(), zettesting::patienceInMilliseconds));
            whenOpen();
            // Ignored when it has been closed.
            dialog.Close(kStillOpen);
        });
        return dialog.RunModal();
    }
    static void Key(Qt::Key key)
    {
        ASSERT_NE(QApplication::focusWidget(), nullptr);
        QTest::keyClick(QApplication::focusWidget(), key);
    }

    utility::OS_ResourceManager resources{ThisModule()};
};

/// In the classic skin.
class ClassicDialogFixture : public DialogFixture
{
  protected:
    ClassicDialogFixture() : DialogFixture(skins::Skin::Classic) {}
};

} // namespace zetui::ui
