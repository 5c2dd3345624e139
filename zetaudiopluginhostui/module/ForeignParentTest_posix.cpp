// The manager belongs to a window of another program, which does not use Qt, on a real X server.
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <vector>

#include <QApplication>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <xcb/xcb.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetaudiopluginhostui/AudioPluginManager.h>
#include <zetaudiopluginhostui/Module.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/HostFixture.h>
#include <zettesting/XServer.h>
#include <zetui/application/Application.h>

namespace zetaudiopluginhostui {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Not;

/// Asks the X server itself, without any toolkit.
class Observer
{
  public:
    explicit Observer(const std::string& display) : connection(xcb_connect(display.c_str(), nullptr)) {}
    ~Observer() { xcb_disconnect(connection); }
    Observer(const Observer&) = delete;
    Observer& operator=(const Observer&) = delete;

    /// Returns the words of a window's property. A window without the property has none.
    std::vector<std::uint32_t> Property(WId window, const char* name) const
    {
        const auto cookie = xcb_get_property(connection, 0, static_cast<xcb_window_t>(window), Atom(name),
                                             XCB_GET_PROPERTY_TYPE_ANY, 0, 64);
        xcb_get_property_reply_t* const reply = xcb_get_property_reply(connection, cookie, nullptr);
        if (!reply)
            return {};
        const auto* const words = static_cast<const std::uint32_t*>(xcb_get_property_value(reply));
        std::vector<std::uint32_t> values(words, words + xcb_get_property_value_length(reply) / 4);
        std::free(reply);
        return values;
    }
    std::uint32_t Atom(const char* name) const
    {
        const auto cookie =
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(connection, cookie, nullptr);
        const std::uint32_t atom = reply ? reply->atom : 0;
        std::free(reply);
        return atom;
    }

  private:
    xcb_connection_t* connection;
};

class ForeignParent : public zettesting::HostFixture
{
  protected:
    ForeignParent()
    {
        ForgetAll();
        EXPECT_TRUE(zetui::ui::InitializeWindows());
        Initialize();
        zettesting::ChildProcess::Options options;
        options.program = ZET_FOREIGN_WINDOW_PROGRAM;
        options.arguments = {(folder / "window").string()};
        other.emplace(options);
        EXPECT_TRUE(other->WaitForError("window is there"));
        parent = std::stoul(zettesting::ReadAll(folder / "window"));
    }
    ~ForeignParent() override
    {
        Terminate();
        zetui::ui::TerminateWindows();
        ForgetAll();
    }

    static void ForgetAll()
    {
        ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
        ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
    }
    /// Calls with the next modal window, other than `past`, that the X server has drawn.
    static void Act(std::function<void(QWidget&)> user, const QWidget* past = nullptr)
    {
        QTimer::singleShot(1, QApplication::instance(), [user = std::move(user), past] {
            QWidget* const window = QApplication::activeModalWidget();
            if (window && window != past && window->windowHandle() && window->windowHandle()->isExposed())
                user(*window);
            else
                Act(user, past);
        });
    }
    bool OpenManager(std::uintptr_t window)
    {
        return AudioPluginManager::GetInstance().DoPluginManagerDialog(nullptr, settings,
                                                                       reinterpret_cast<HWND>(window));
    }
    std::vector<std::uint32_t> TransientFor(const QWidget& window) const
    {
        return observer.Property(window.winId(), "WM_TRANSIENT_FOR");
    }
    std::vector<std::uint32_t> States(const QWidget& window) const
    {
        return observer.Property(window.winId(), "_NET_WM_STATE");
    }

    const zettesting::XServer server;
    const zettesting::ScopedEnvironment display{"DISPLAY", server.Display()};
    const zettesting::ScopedEnvironment noWayland{"WAYLAND_DISPLAY", std::nullopt};
    const zettesting::ScopedEnvironment platform{"QT_QPA_PLATFORM", "xcb"};
    const Observer observer{server.Display()};
    std::optional<zettesting::ChildProcess> other;
    std::uintptr_t parent = 0;
    AudioPluginManagerSettings settings;
};

TEST_F(ForeignParent, TheManagerBelongsToItIsModalAndOpensInItsMiddle)
{
    Act([this](QWidget& window) {
        EXPECT_THAT(TransientFor(window), ElementsAre(parent));
        EXPECT_THAT(States(window), Contains(observer.Atom("_NET_WM_STATE_MODAL")));
        // The other program's window is 600 by 500, at 300, 200.
        EXPECT_LE((window.frameGeometry().center() - QPoint(600, 450)).manhattanLength(), 2);
        QTest::keyClick(&window, Qt::Key_Escape);
    });
    EXPECT_FALSE(OpenManager(parent));
}

TEST_F(ForeignParent, AnAlertBelongsToItToo)
{
    zettesting::WriteAll(folder / "file", "");
    zetcore::filesupport::Dir::SetPrefDir(zettesting::ToWide(folder / "file" / "prefs"));
    int alerts = 0;
    Act([&](QWidget& manager) {
        const auto answer = [&](QWidget& alert) {
            ++alerts;
            EXPECT_THAT(TransientFor(alert), ElementsAre(parent));
            EXPECT_THAT(States(alert), Contains(observer.Atom("_NET_WM_STATE_MODAL")));
            QTest::keyClick(&alert, Qt::Key_Return);
        };
        Act(answer, &manager);
        QTest::keyClick(&manager, Qt::Key_Return);
    });
    OpenManager(parent);
    EXPECT_EQ(alerts, 1);
}

TEST_F(ForeignParent, NoneOrOneThatIsGoneOpensTheManagerByItself)
{
    other->Kill();
    other->Wait();
    for (const std::uintptr_t window : {std::uintptr_t{0}, parent, std::uintptr_t{0x7FFFFFFF}}) {
        bool opened = false;
        Act([&](QWidget& manager) {
            opened = true;
            EXPECT_THAT(TransientFor(manager), Not(Contains(parent)));
            EXPECT_THAT(TransientFor(manager), Not(Contains(0x7FFFFFFFu)));
            QTest::keyClick(&manager, Qt::Key_Escape);
        });
        OpenManager(window);
        EXPECT_TRUE(opened);
    }
}

TEST_F(ForeignParent, TheManagerSurvivesItsEnd)
{
    Act([this](QWidget& window) {
        other->Kill();
        other->Wait();
        Act([this](QWidget& manager) {
            EXPECT_THAT(observer.Property(parent, "WM_NAME"), IsEmpty());
            manager.resize(manager.size() + QSize(20, 20));
            QTest::keyClick(&manager, Qt::Key_Return);
        });
        EXPECT_TRUE(window.isVisible());
    });
    EXPECT_FALSE(OpenManager(parent));
}

} // namespace
} // namespace zetaudiopluginhostui
