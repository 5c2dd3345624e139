#include <zetui/application/Desktop.h>

#include <optional>
#include <vector>

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QDesktopServices>
#include <QTextBrowser>
#include <QUrl>

#include "testing/PrivateBus.h"
#include "testing/WindowsFixture.h"

namespace zetui::ui {
namespace {

using std::filesystem::path;
using Addresses = std::vector<std::string>;

/// The file manager of a desktop.
class FakeFileManager : public QDBusVirtualObject
{
  public:
    enum class Answer
    {
        Done,
        Refusal,
        Silence,
    };
    FakeFileManager(const PrivateBus& bus, Answer answerToAll)
        : connection(QDBusConnection::connectToBus(QString::fromStdString(bus.Address()), name)),
          answer(answerToAll)
    {
        EXPECT_TRUE(connection.registerVirtualObject(QStringLiteral("/org/freedesktop/FileManager1"), this));
        EXPECT_TRUE(connection.registerService(name));
    }
    ~FakeFileManager() override { Leave(); }
    void Leave()
    {
        connection = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(name);
    }

    QString introspect(const QString&) const override { return {}; }
    bool handleMessage(const QDBusMessage& message, const QDBusConnection& asked) override
    {
        if (message.interface() != name || message.member() != u"ShowItems" || message.signature() != u"ass")
            return false;
        for (const QString& address : message.arguments().constFirst().toStringList())
            selected.push_back(address.toStdString());
        if (answer == Answer::Refusal)
            asked.send(message.createErrorReply(QDBusError::Failed, QStringLiteral("no screen")));
        else if (answer == Answer::Done)
            asked.send(message.createReply());
        else
            message.setDelayedReply(true);
        ++answered;
        return true;
    }

    Addresses selected;
    int answered = 0;

  private:
    const QString name = QStringLiteral("org.freedesktop.FileManager1");
    QDBusConnection connection;
    const Answer answer;
};

/// A window on a desktop that opens folders.
class FileManager : public WindowsFixture
{
  protected:
    using Answer = FakeFileManager::Answer;
    FileManager()
    {
        QObject::connect(&desktop, &QTextBrowser::anchorClicked, &desktop, [this](const QUrl& url) {
            opened.push_back(url.toString(QUrl::FullyEncoded).toStdString());
        });
        QDesktopServices::setUrlHandler(QStringLiteral("file"), &desktop, "anchorClicked");
        zettesting::WriteAll(file, "");
    }
    ~FileManager() override { QDesktopServices::unsetUrlHandler(QStringLiteral("file")); }

    void Show(const path& shown)
    {
        ShowInFileManager(zettesting::ToWide(shown), [this] { ++failures; });
    }
    static std::string AddressOf(const path& local)
    {
        return QUrl::fromLocalFile(QString::fromStdString(local.string())).toEncoded().toStdString();
    }

    PrivateBus bus;
    const zettesting::ScopedEnvironment busAddress{"DBUS_SESSION_BUS_ADDRESS", bus.Address()};
    QTextBrowser desktop;
    const path file = folder / "1 + 1 = 50%, \xC3\xA4hnlich#.so";
    Addresses opened;
    int failures = 0;
};

TEST_F(FileManager, IsAskedToSelectTheFile)
{
    FakeFileManager manager(bus, Answer::Done);
    Show(file);
    EXPECT_TRUE(manager.selected.empty()) << "nobody waits for it";
    EXPECT_TRUE(WaitUntil([&] { return manager.answered == 1; }));
    EXPECT_EQ(manager.selected, Addresses{AddressOf(file)});
    EXPECT_NE(manager.selected.front().find("/1%20+%201%20=%2050%25,%20%C3%A4hnlich%23.so"),
              std::string::npos);
    Show(folder.Path());
    EXPECT_TRUE(WaitUntil([&] { return manager.answered == 2; }));
    EXPECT_EQ(manager.selected.back(), AddressOf(folder.Path()));
    EXPECT_TRUE(opened.empty());
    EXPECT_EQ(failures, 0);
}

TEST_F(FileManager, ThatIsNotThereIsReplacedByTheFolder)
{
    Show(file);
    EXPECT_TRUE(WaitUntil([&] { return !opened.empty(); }));
    EXPECT_EQ(opened, Addresses{AddressOf(folder.Path())});
    EXPECT_EQ(failures, 0);
}

TEST_F(FileManager, ThatRefusesIsReplacedByTheFolder)
{
    FakeFileManager manager(bus, Answer::Refusal);
    Show(file);
    EXPECT_TRUE(WaitUntil([&] { return !opened.empty(); }));
    EXPECT_EQ(opened, Addresses{AddressOf(folder.Path())});
}

TEST_F(FileManager, ThatGoesWithoutAnAnswerIsReplacedByTheFolder)
{
    FakeFileManager manager(bus, Answer::Silence);
    Show(file);
    EXPECT_TRUE(WaitUntil([&] { return manager.answered == 1; }));
    EXPECT_TRUE(opened.empty());
    manager.Leave();
    EXPECT_TRUE(WaitUntil([&] { return !opened.empty(); }));
    EXPECT_EQ(opened, Addresses{AddressOf(folder.Path())});
}

TEST_F(FileManager, WithoutABusTheFolderIsOpened)
{
    for (const char* const address : {"", "unix:path=/nonexistent/bus"}) {
        const zettesting::ScopedEnvironment nowhere("DBUS_SESSION_BUS_ADDRESS", address);
        const zettesting::ScopedEnvironment noUsual("XDG_RUNTIME_DIR", folder.Path().string());
        opened.clear();
        Show(file);
        EXPECT_EQ(opened, Addresses{AddressOf(folder.Path())}) << address;
    }
}

TEST_F(FileManager, OfAFileThatIsGoneShowsTheNearestFolder)
{
    FakeFileManager manager(bus, Answer::Done);
    Show(folder / "gone" / "deeper" / "file.so");
    EXPECT_EQ(opened, Addresses{AddressOf(folder.Path())});
    EXPECT_TRUE(manager.selected.empty());
}

TEST_F(FileManager, ThatCannotBeStartedInAnyWayIsTold)
{
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    Show(file);
    EXPECT_EQ(failures, 0) << "the bus has not answered yet";
    EXPECT_TRUE(WaitUntil([&] { return failures == 1; }));
    Show(folder / "gone");
    EXPECT_EQ(failures, 2);
    Show({});
    EXPECT_EQ(failures, 3);
}

} // namespace
} // namespace zetui::ui
