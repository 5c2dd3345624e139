#pragma once

#include <functional>

#include <QCoreApplication>
#include <QEventLoop>
#include <zettesting/Environment.h>
#include <zettesting/HostFixture.h>
#include <zettesting/Patience.h>
#include <zetui/application/Application.h>
#include <zetui/skins/Skins.h>

namespace zetui {

/// Handles events until the condition holds; false when it takes too long.
inline bool WaitUntil(const std::function<bool()>& condition)
{
    return zettesting::Becomes(condition, [] { QCoreApplication::processEvents(QEventLoop::AllEvents, 10); });
}

/// Real windows and widgets without a screen, fresh for each test, in a chosen look.
class WindowsFixture : public zettesting::HostFixture
{
  protected:
    explicit WindowsFixture(skins::Skin skin = skins::Skin::V7)
    {
        skins::SetSkin(skin);
        skins::SetScheme(skins::Scheme::Light);
        EXPECT_TRUE(ui::InitializeWindows());
    }
    ~WindowsFixture() override
    {
        ui::TerminateWindows();
        skins::SetSkin(skins::Skin::V7);
        skins::SetScheme(skins::Scheme::FollowDesktop);
    }

  private:
    zettesting::ScopedEnvironment platform{"QT_QPA_PLATFORM", "offscreen"};
    /// The look of the tester's own desktop is none of the tests' business.
    zettesting::ScopedEnvironment noBus{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"};
};

} // namespace zetui
