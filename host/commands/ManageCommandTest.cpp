#include <algorithm>
#include <cstdlib>
#include <functional>
#include <sstream>
#include <stdexcept>

#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QMouseEvent>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiofilterhost/ResetRegistry.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhost/ResetBannedPlugins.h>
#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>
#include <zetcore/threads/MainThread.h>
#include <zettesting/HostFixture.h>
#include <zettesting/NoDisplay.h>
#include <zettesting/Patience.h>
#include <zetui/application/Application.h>
#include <zetui/skins/Skins.h>

#include "commands/CommandLine.h"
#include "session/WindowSettings.h"

namespace zetaudiopluginmanager {
namespace {

using testing::HasSubstr;
using testing::Not;
using Arguments = std::vector<std::string>;
using Bounds = zetcore::geom::RectT<int>;

/// The program with windows that nobody sees, and a user who acts in whatever window is open.
class ManageCommand : public zettesting::HostFixture
{
  protected:
    ManageCommand() : platform("QT_QPA_PLATFORM", "offscreen") { ForgetAll(); }
    ~ManageCommand() override
    {
        ForgetAll();
        zetui::skins::SetSkin(skinBefore);
        zetcore::config::Localizer::Get().Reset();
    }

    /// Returns the exit status.
    int Run(Arguments arguments, std::function<void(QWidget&)> user)
    {
        ForgetAll();
        UserActs(std::move(user));
        arguments.insert(arguments.begin(), {"--prefs", prefs.string()});
        std::ostringstream output;
        const int status = RunCommandLine(arguments, output);
        EXPECT_EQ(output.str(), "");
        return status;
    }
    static void Cancel(QWidget& window) { QTest::keyClick(&window, Qt::Key_Escape); }

    static bool FillsTheScreen(const QWidget& window)
    {
        return window.frameGeometry() == window.screen()->availableGeometry();
    }
    using Texts = std::vector<std::string>;
    static QHeaderView& TitlesOf(const QWidget& window)
    {
        for (QTableView* const list : window.findChildren<QTableView*>()) {
            if (list->horizontalHeader()->count() > 1)
                return *list->horizontalHeader();
        }
        throw std::runtime_error("the window has no list with titles");
    }
    static Texts Titles(const QWidget& window)
    {
        const QHeaderView& titles = TitlesOf(window);
        Texts texts;
        for (int place = 0; place < titles.count(); ++place)
            texts.push_back(titles.model()
                                ->headerData(titles.logicalIndex(place), Qt::Horizontal)
                                .toString()
                                .toStdString());
        return texts;
    }
    /// Drags the title at one place, with the mouse, to the first half of the title at another.
    static void DragTitle(const QWidget& window, int from, int to)
    {
        const QHeaderView& titles = TitlesOf(window);
        QWidget* const area = titles.viewport();
        const auto at = [&](int place, int divisor) {
            const int column = titles.logicalIndex(place);
            return QPoint(titles.sectionViewportPosition(column) + titles.sectionSize(column) / divisor,
                          titles.height() / 2);
        };
        QTest::mousePress(area, Qt::LeftButton, {}, at(from, 2));
        const QPoint end = at(to, 4);
        QMouseEvent move(QEvent::MouseMove, end, area->mapToGlobal(end), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(area, &move);
        QTest::mouseRelease(area, Qt::LeftButton, {}, end);
    }

    /// Waits, by posting itself again, until a modal window is there, another than `past`.
    static void UserActs(std::function<void(QWidget&)> user, const QWidget* past = nullptr)
    {
        zetcore::threads::AsyncCallFromMainThread(
            [user = std::move(user), past]() mutable {
                QWidget* const window = QApplication::activeModalWidget();
                if (window && window != past && window->isVisible())
                    user(*window);
                else
                    UserActs(std::move(user), past);
            },
            0);
    }
    static void ForgetAll()
    {
        ResetRegistry(*zetaudiofilterhost::PluginModuleInfoManager::GetInstance());
        ResetBannedPlugins(*zetaudiopluginhost::BannedPluginManager::GetInstance());
    }

    zettesting::ScopedEnvironment platform;
    const zetui::skins::Skin skinBefore = zetui::skins::GetSkin();
};

TEST_F(ManageCommand, OpensTheManagerAndIsTheDefaultWhereThereIsADisplay)
{
    for (const Arguments& arguments : {Arguments{"manage"}, Arguments{}}) {
        std::string title, desktopFile;
        EXPECT_EQ(Run(arguments,
                      [&](QWidget& window) {
                          title = window.windowTitle().toStdString();
                          desktopFile = QGuiApplication::desktopFileName().toStdString();
                          Cancel(window);
                      }),
                  0);
        EXPECT_EQ(title, "Audio Plug-In Manager");
        EXPECT_EQ(desktopFile, "io.github.zetaudiopluginhostui.Manager");
        EXPECT_FALSE(zetui::ui::HaveWindows()) << "all is put back at the end";
    }
}

TEST_F(ManageCommand, TheFirstWindowIsInTheMiddleOfTheScreenAndHasRoomForTheList)
{
    Run({"manage"}, [](QWidget& window) {
        const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
        EXPECT_TRUE(screen.contains(window.geometry()));
        EXPECT_EQ(window.width(), std::min(1120, screen.width()));
        EXPECT_EQ(window.height(), 680);
        EXPECT_LE(std::abs(window.geometry().center().x() - screen.center().x()), 1);
        Cancel(window);
    });
}

TEST_F(ManageCommand, TheWindowOpensWhereItWasClosed)
{
    Run({"manage"}, [](QWidget& window) {
        window.setGeometry(33, 44, 755, 533);
        Cancel(window);
    });
    EXPECT_EQ(LoadWindowSettings().manager.dialogBounds, (Bounds{33, 44, 755, 533}));
    Run({"manage"}, [](QWidget& window) {
        EXPECT_EQ(window.geometry(), QRect(33, 44, 755, 533));
        Cancel(window);
    });
}

TEST_F(ManageCommand, AColumnStandsWhereTheUserHasDraggedIt)
{
    Run({"manage"}, [](QWidget& window) {
        EXPECT_EQ(Titles(window), (Texts{"Enabled", "Name", "Type", "Status", "Version", "Path"}));
        DragTitle(window, 5, 4);
        Cancel(window);
    });
    for (int time = 0; time < 2; ++time) {
        Run({"manage"}, [](QWidget& window) {
            EXPECT_EQ(Titles(window), (Texts{"Enabled", "Name", "Type", "Status", "Path", "Version"}));
            Cancel(window);
        });
    }
    EXPECT_EQ(LoadWindowSettings().controls,
              (ControlValues{{"AudioPluginManager/PluginList/columns", "1 2 3 4 6 5"}}));
}

TEST_F(ManageCommand, AMaximisedWindowOpensMaximisedAndGoesBackToItsPlace)
{
    Run({"manage"}, [](QWidget& window) {
        window.setGeometry(33, 44, 755, 533);
        window.showMaximized();
        EXPECT_TRUE(QTest::qWaitFor([&window] { return FillsTheScreen(window); },
                                    zettesting::patienceInMilliseconds));
        Cancel(window);
    });
    EXPECT_EQ(LoadWindowSettings().manager.dialogBounds, (Bounds{33, 44, 755, 533}));
    Run({"manage", "--skin", "classic"}, [](QWidget& window) {
        EXPECT_TRUE(window.isMaximized());
        EXPECT_TRUE(QTest::qWaitFor([&window] { return FillsTheScreen(window); },
                                    zettesting::patienceInMilliseconds));
        window.showNormal();
        EXPECT_TRUE(QTest::qWaitFor([&window] { return window.geometry() == QRect(33, 44, 755, 533); },
                                    zettesting::patienceInMilliseconds));
        Cancel(window);
    });
    Run({"manage"}, [](QWidget& window) {
        EXPECT_FALSE(window.isMaximized());
        Cancel(window);
    });
}

TEST_F(ManageCommand, AnOrderOfColumnsThatCannotBeIsSaidAndOnesOfOthersStay)
{
    const std::string order = "AudioPluginManager/PluginList/columns";
    SaveWindowSettings({}, {{order, "6 1 2"}, {"A later window/columns", "x"}});
    const auto open = [this] {
        testing::internal::CaptureStderr();
        Run({"manage"}, [](QWidget& window) {
            EXPECT_EQ(Titles(window).front(), "Enabled");
            Cancel(window);
        });
        return testing::internal::GetCapturedStderr();
    };
    const std::string said = open();
    EXPECT_THAT(said, HasSubstr(zetcore::string::UTF16to8(WindowSettingsFile().FullPath())));
    EXPECT_THAT(said, HasSubstr(order + ": \"6 1 2\" cannot be used"));
    EXPECT_EQ(LoadWindowSettings().controls,
              (ControlValues{{order, "1 2 3 4 5 6"}, {"A later window/columns", "x"}}));
    EXPECT_THAT(open(), Not(HasSubstr("cannot be used"))) << "said once";
}

TEST_F(ManageCommand, AWindowThatWouldOpenOffScreenIsBroughtBack)
{
    for (const Bounds& away : {Bounds{20000, 300, 750, 500}, Bounds{100, -9000, 750, 500},
                               Bounds{-30000, -30000, 750, 500}, Bounds{50000, 50000, 30000, 30000}}) {
        zetaudiopluginhostui::AudioPluginManagerSettings settings;
        settings.dialogBounds = away;
        SaveWindowSettings(settings);
        Run({"manage"}, [](QWidget& window) {
            const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
            EXPECT_TRUE(screen.intersects(window.geometry()));
            EXPECT_TRUE(screen.contains(window.geometry().topLeft()));
            Cancel(window);
        });
    }
}

TEST_F(ManageCommand, ADamagedSettingsFileOpensTheWindowAllTheSame)
{
    zettesting::WriteAll(prefs / "PluginManagerWindow.xml", "<managerwindow");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Run({"manage"}, Cancel), 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("PluginManagerWindow.xml"));
    EXPECT_TRUE(std::filesystem::exists(prefs / "PluginManagerWindow.xml.damaged"));
}

TEST_F(ManageCommand, ADamagedListIsToldInANoteAndIsExitStatusOne)
{
    const std::string list = (prefs / "AudioPlugins.xml").string();
    zettesting::WriteAll(list, "<audioplugins");
    testing::internal::CaptureStderr();
    std::string note, next;
    const int status = Run({"manage"}, [&](QWidget& window) {
        for (const QLabel* label : window.findChildren<QLabel*>())
            note += label->text().toStdString() + "\n";
        UserActs(
            [&](QWidget& manager) {
                next = manager.windowTitle().toStdString();
                Cancel(manager);
            },
            &window);
        Cancel(window);
    });
    EXPECT_EQ(status, 1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("kept as " + list + ".damaged"));
    EXPECT_THAT(note, HasSubstr("\n\n" + list + "\n"));
    EXPECT_EQ(next, "Audio Plug-In Manager");
}

TEST_F(ManageCommand, SettingsThatCannotBeSavedAreExitStatusOne)
{
    std::filesystem::create_directory(prefs / "PluginManagerWindow.xml");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Run({"manage"}, Cancel), 1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("PluginManagerWindow.xml"));
}

TEST_F(ManageCommand, ARegistryThatTheDialogCannotSaveIsExitStatusOne)
{
    std::string title;
    EXPECT_EQ(Run({"manage"},
                  [&](QWidget& window) {
                      const auto registry =
                          prefs / zetaudiofilterhost::PluginModuleInfoManager::GetSettingsFileName();
                      std::filesystem::remove(registry);
                      std::filesystem::create_directories(registry / "in the way");
                      UserActs(
                          [&title](QWidget& alert) {
                              title = alert.windowTitle().toStdString();
                              QTest::keyClick(&alert, Qt::Key_Return);
                          },
                          &window);
                      QTest::keyClick(&window, Qt::Key_Return);
                  }),
              1);
    EXPECT_NE(title, "") << "the user is told";
}

TEST_F(ManageCommand, ACrashIsToldInAWindowBeforeTheManagerOpens)
{
    const std::string path = (folder / "bad.so").string();
    zettesting::WriteAll(prefs / "ScannedPluginPath.txt", "VST|" + path + "|");
    std::vector<std::string> titles;
    EXPECT_EQ(Run({"manage"},
                  [&](QWidget& alert) {
                      titles.push_back(alert.windowTitle().toStdString());
                      UserActs([&, first = &alert](QWidget& window) {
                          EXPECT_NE(&window, first);
                          titles.push_back(window.windowTitle().toStdString());
                          Cancel(window);
                      });
                      QTest::keyClick(&alert, Qt::Key_Return);
                  }),
              0);
    EXPECT_EQ(titles.size(), 2u);
    EXPECT_EQ(titles.back(), "Audio Plug-In Manager");
    EXPECT_FALSE(std::filesystem::exists(prefs / "ScannedPluginPath.txt"));
}

TEST_F(ManageCommand, TheSkinIsChosenBeforeOrBehindTheCommand)
{
    struct Case
    {
        Arguments arguments;
        bool isV7;
    };
    for (const Case& each : {Case{{"manage", "--skin", "classic"}, false},
                             Case{{"--skin", "v7", "manage"}, true}, Case{{"--skin=classic"}, false}})
        Run(each.arguments, [&](QWidget& window) {
            EXPECT_EQ(zetui::skins::IsRunningV7OrBeyond(), each.isV7);
            Cancel(window);
        });
}

TEST_F(ManageCommand, TheThemeIsChosenAndAnUnknownOneIsWrongUsage)
{
    for (const bool dark : {true, false})
        Run({"manage", "--theme", dark ? "Dark" : "light"}, [&](QWidget& window) {
            EXPECT_EQ(zetui::skins::IsDark(), dark);
            EXPECT_EQ(window.palette().color(QPalette::Window).lightness() < 128, dark);
            Cancel(window);
        });
    // The desktop of this test is bright.
    const zettesting::ScopedEnvironment noBus("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus");
    zetui::skins::SetScheme(zetui::skins::Scheme::Dark);
    Run({"manage", "--theme", "system"}, [&](QWidget& window) {
        EXPECT_FALSE(zetui::skins::IsDark());
        Cancel(window);
    });
    std::ostringstream output;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunCommandLine({"manage", "--theme", "pink"}, output), 2);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "zetaudiopluginmanager: --theme pink: there are light, dark and system\n");
}

TEST_F(ManageCommand, TheLanguageIsChosenAndAnUnknownOneOrAnUnknownSkinIsWrongUsage)
{
    std::filesystem::create_directories(folder / "bin/lang");
    zettesting::WriteAll(folder / "bin/lang/de.txt",
                         "\"$$$/AudioPluginManager/DialogTitle\"=\"Plug-in-Verwaltung\"\n");
    zetcore::filesupport::commondirs::SetExecutableDir(zettesting::ToWide(folder / "bin"));
    EXPECT_EQ(Run({"manage", "--lang", "de-DE"},
                  [](QWidget& window) {
                      EXPECT_EQ(window.windowTitle().toStdString(), "Plug-in-Verwaltung");
                      Cancel(window);
                  }),
              0);
    for (const Arguments& wrong : {Arguments{"manage", "--lang", "tlh"}, Arguments{"manage", "--skin", "v8"},
                                   Arguments{"manage", "stray"}}) {
        std::ostringstream output;
        testing::internal::CaptureStderr();
        EXPECT_EQ(RunCommandLine(wrong, output), 2);
        EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(wrong.back()));
    }
}

TEST_F(ManageCommand, WithoutADisplayItSaysSoAndExitsWithTwo)
{
    const zettesting::NoDisplay noDisplay;
    std::ostringstream output;
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunCommandLine({"--prefs", prefs.string(), "manage"}, output), 2);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("no display"));
    testing::internal::CaptureStderr();
    EXPECT_EQ(RunCommandLine({"--prefs", prefs.string()}, output), 2);
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
}

} // namespace
} // namespace zetaudiopluginmanager
