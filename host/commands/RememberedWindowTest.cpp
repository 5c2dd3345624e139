#include <algorithm>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <QApplication>
#include <QHeaderView>
#include <QMouseEvent>
#include <QScreen>
#include <QTableView>
#include <QTest>
#include <gmock/gmock.h>
#include <zetcore/string/Utf.h>
#include <zettesting/Patience.h>

#include "session/WindowSettings.h"
#include "testing/ManageFixture.h"

namespace zetaudiopluginmanager {
namespace {

using testing::HasSubstr;
using testing::Not;
using Bounds = zetcore::geom::RectT<int>;

/// The manager's window is closed and opened again.
class RememberedWindow : public ManageFixture
{
  protected:
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
};

TEST_F(RememberedWindow, TheFirstWindowIsInTheMiddleOfTheScreenAndHasRoomForTheList)
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

TEST_F(RememberedWindow, TheWindowOpensWhereItWasClosed)
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

TEST_F(RememberedWindow, AMaximisedWindowOpensMaximisedAndGoesBackToItsPlace)
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

TEST_F(RememberedWindow, AWindowThatWouldOpenOffScreenIsBroughtBack)
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

TEST_F(RememberedWindow, AColumnStandsWhereTheUserHasDraggedIt)
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

TEST_F(RememberedWindow, AnOrderOfColumnsThatCannotBeIsSaidAndOnesOfOthersStay)
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

} // namespace
} // namespace zetaudiopluginmanager
