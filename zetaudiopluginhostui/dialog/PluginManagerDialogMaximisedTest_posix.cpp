// The manager's window under a real window manager, on an X server.
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <map>

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>
#include <QStandardPaths>
#include <QWindow>
#include <gtest/gtest.h>
#include <xcb/xcb.h>
#include <zetui/archiveddialog/ControlStore.h>

#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

class MemoryStore final : public zetui::ui::ControlStore
{
  public:
    std::string Read(const std::string& key) const override
    {
        const auto found = values.find(key);
        return found == values.end() ? std::string() : found->second;
    }
    void Write(const std::string& key, const std::string& value) override { values[key] = value; }

    std::map<std::string, std::string> values;
};

/// A client of the X server that is no toolkit.
class Client
{
  public:
    Client() : connection(xcb_connect(nullptr, nullptr))
    {
        root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    }
    ~Client() { xcb_disconnect(connection); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    /// Asks the window manager, as its own button in the title bar does.
    void AskToMaximise(WId window) const
    {
        constexpr std::uint32_t add = 1, fromPager = 2;
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = static_cast<xcb_window_t>(window);
        message.type = Atom("_NET_WM_STATE");
        message.data.data32[0] = add;
        message.data.data32[1] = Atom("_NET_WM_STATE_MAXIMIZED_HORZ");
        message.data.data32[2] = Atom("_NET_WM_STATE_MAXIMIZED_VERT");
        message.data.data32[3] = fromPager;
        xcb_send_event(connection, 0, root,
                       XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        xcb_flush(connection);
    }

  private:
    xcb_atom_t Atom(const char* name) const
    {
        const auto cookie =
            xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
        xcb_intern_atom_reply_t* const reply = xcb_intern_atom_reply(connection, cookie, nullptr);
        const xcb_atom_t atom = reply ? reply->atom : 0;
        std::free(reply);
        return atom;
    }

    xcb_connection_t* connection;
    xcb_window_t root;
};

class DialogMaximised : public DialogFixture
{
  protected:
    DialogMaximised() { zetui::ui::SetControlStore(store); }
    ~DialogMaximised() override
    {
        CloseDialog();
        zetui::ui::SetControlStore(nullptr);
        manager.kill();
        manager.waitForFinished();
    }
    /// The window manager decides whether the window gets the keyboard.
    void ShowDialog()
    {
        MakeDialog();
        dialog->UI_Show(true);
        ASSERT_TRUE(WaitUntil([this] { return Window().windowHandle()->isExposed(); }));
    }
    /// The window manager keeps a few pixels for the window's frame and title.
    bool FillsTheScreen() const
    {
        constexpr int frame = 60;
        const QSize screen = Window().screen()->size();
        return Window().width() > screen.width() - frame && Window().height() > screen.height() - frame;
    }

    std::shared_ptr<MemoryStore> store = std::make_shared<MemoryStore>();
    QProcess manager;
};

TEST_F(DialogMaximised, AWindowThatTheWindowManagerHasMaximisedOpensSoAgain)
{
    if (QGuiApplication::platformName() != QStringLiteral("xcb"))
        GTEST_SKIP() << "there is no X server";
    const QString program = QStandardPaths::findExecutable(QStringLiteral("openbox"));
    if (program.isEmpty())
        GTEST_SKIP() << "there is no openbox";
    const Client client;
    // A window that comes while the window manager is starting may stay unseen. It makes the file when it is
    // ready.
    const std::filesystem::path ready = folder / "ready";
    manager.start(program, {QStringLiteral("--sm-disable"), QStringLiteral("--startup"),
                            QStringLiteral("touch ") + QString::fromStdString(ready.string())});
    ASSERT_TRUE(WaitUntil([&] { return std::filesystem::exists(ready); }));

    ShowDialog();
    ASSERT_FALSE(FillsTheScreen());
    const QSize before = Window().size();
    client.AskToMaximise(Window().winId());
    ASSERT_TRUE(WaitUntil([this] { return FillsTheScreen() && Window().isMaximized(); }));
    CloseDialog();
    ASSERT_EQ(store->values.size(), 1u);
    EXPECT_EQ(store->values.begin()->second, "maximised");

    ShowDialog();
    EXPECT_TRUE(WaitUntil([this] { return FillsTheScreen(); }));
    EXPECT_TRUE(Window().isMaximized());
    Window().showNormal();
    EXPECT_TRUE(WaitUntil([&] { return Window().size() == before; }));
    CloseDialog();
    EXPECT_EQ(store->values.begin()->second, "normal");
}

} // namespace
} // namespace zetaudiopluginhostui
