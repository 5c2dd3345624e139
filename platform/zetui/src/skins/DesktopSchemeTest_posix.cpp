#include "skins/DesktopScheme.h"

#include <optional>

#include <QApplication>
#include <QPalette>
#include <QWidget>

#include "pixmill/QtConversions.h"
#include "skins/SkinColors.h"
#include "skins/SkinStyle.h"
#include "testing/FakePortal.h"
#include "testing/WindowsFixture.h"

namespace zetui::skins {
namespace {

constexpr uint noPreference = 0, preferDark = 1, preferLight = 2;

/// Windows open on a desktop with a portal.
class DesktopPortal : public WindowsFixture
{
  protected:
    DesktopPortal()
    {
        SetScheme(Scheme::FollowDesktop);
        RemoveSkin();
    }
    /// The skin goes before the bus does.
    ~DesktopPortal() override { RemoveSkin(); }

    void Open(uint scheme)
    {
        portal.emplace(bus, scheme);
        OpenWindows();
    }
    static void OpenWindows() { ApplySkin(*qobject_cast<QApplication*>(QCoreApplication::instance())); }
    static QColor WindowColor() { return QApplication::palette().color(QPalette::Window); }
    static QColor ColorOf(bool dark) { return pixmill::ToQt(ColorsOf(Skin::V7, dark).window); }

    PrivateBus bus;
    const zettesting::ScopedEnvironment busAddress{"DBUS_SESSION_BUS_ADDRESS", bus.Address()};
    std::optional<FakePortal> portal;
};

TEST_F(DesktopPortal, TellsTheSchemeBeforeTheFirstWindowIsOpen)
{
    Open(preferDark);
    EXPECT_TRUE(IsDark());
    EXPECT_EQ(WindowColor(), ColorOf(true));
}

TEST_F(DesktopPortal, IsFollowedWhenTheUserChangesTheSetting)
{
    Open(preferLight);
    EXPECT_FALSE(IsDark());
    QWidget window;
    window.show();
    for (const uint scheme : {preferDark, preferLight, preferDark, noPreference}) {
        portal->Change(scheme);
        EXPECT_TRUE(WaitUntil([&] { return IsDark() == (scheme == preferDark); })) << scheme;
        EXPECT_EQ(WindowColor(), ColorOf(scheme == preferDark)) << scheme;
        EXPECT_TRUE(WaitUntil([&] {
            return window.palette().color(QPalette::Window) == ColorOf(scheme == preferDark);
        })) << scheme;
    }
}

TEST_F(DesktopPortal, YieldsToTheUsersOwnChoice)
{
    Open(preferDark);
    SetScheme(Scheme::Light);
    EXPECT_EQ(WindowColor(), ColorOf(false));
    portal->Change(preferLight);
    portal->Change(preferDark);
    EXPECT_TRUE(WaitUntil([&] { return portal->Questions() >= 2; }));
    EXPECT_EQ(WindowColor(), ColorOf(false));
    SetScheme(Scheme::FollowDesktop);
    EXPECT_TRUE(WaitUntil([] { return WindowColor() == ColorOf(true); }));
}

TEST_F(DesktopPortal, IsAskedForItsColourSchemeOnly)
{
    Open(preferLight);
    const int before = portal->Questions();
    portal->Tell(QStringLiteral("org.freedesktop.appearance"), QStringLiteral("contrast"));
    portal->Tell(QStringLiteral("org.gnome.desktop.interface"), QStringLiteral("color-scheme"));
    portal->Change(preferDark);
    EXPECT_TRUE(WaitUntil([] { return IsDark(); }));
    EXPECT_EQ(portal->Questions(), before + 1);
}

TEST_F(DesktopPortal, ThatComesLaterIsFollowed)
{
    OpenWindows();
    EXPECT_FALSE(IsDark());
    portal.emplace(bus, preferDark);
    portal->Change(preferDark);
    EXPECT_TRUE(WaitUntil([] { return IsDark(); }));
}

TEST_F(DesktopPortal, ThatIsNotThereLeavesItToThePalette)
{
    OpenWindows();
    EXPECT_EQ(DesktopScheme([] {}).AsksForDark(), std::nullopt);
    const zettesting::ScopedEnvironment nowhere("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    EXPECT_EQ(DesktopScheme([] {}).AsksForDark(), std::nullopt);
}

} // namespace
} // namespace zetui::skins
