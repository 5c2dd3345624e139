// In these tests, the user follows a scan that runs from the manager dialog, and ends it.
#include <algorithm>
#include <chrono>
#include <fstream>
#include <iostream>
#include <sstream>

#include <QApplication>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/TestPlugins.h>

#include "dialog/PluginManagerIds.h"
#include "testing/DialogFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::IsEmpty;
using zettesting::ToWide;
using Clock = std::chrono::steady_clock;

QWidget* ProgressWindow()
{
    QWidget* const window = QApplication::activeModalWidget();
    return window && window->isVisible() && window->findChild<QProgressBar*>() ? window : nullptr;
}

/// Writes down the content of the progress window each time that it is drawn.
class DrawnTexts : public QObject
{
  public:
    explicit DrawnTexts(std::function<void(const std::string&)> newText) : onText(std::move(newText))
    {
        QApplication::instance()->installEventFilter(this);
    }
    bool eventFilter(QObject* object, QEvent* event) override
    {
        const auto* const label = qobject_cast<QLabel*>(object);
        if (event->type() == QEvent::Paint && label && ProgressWindow() == label->window())
            onText(label->text().toStdString());
        return false;
    }

  private:
    const std::function<void(const std::string&)> onText;
};

class DialogProgress : public DialogFixture
{
  protected:
    DialogProgress()
    {
        std::filesystem::create_directory(plugins);
        TheRegistry().GetPluginTechnology(2)->AddPluginDirectories({ToWide(plugins)});
    }
    std::filesystem::path Copy(const char* plugin, const char* title) const
    {
        return zettesting::CopyTestPlugin(plugin, plugins, title);
    }
    /// The output of the plug-ins in the scanner until now.
    std::string ScanLogs() const
    {
        std::ostringstream all;
        if (std::filesystem::exists(prefs / "scan-logs"))
            for (const auto& log : std::filesystem::directory_iterator(prefs / "scan-logs"))
                all << std::ifstream(log.path(), std::ios::binary).rdbuf();
        return all.str();
    }
    /// Calls it again and again, in any event loop that runs, until it says that it is done.
    static void Act(std::function<bool()> act)
    {
        QTimer::singleShot(1, QApplication::instance(), [act = std::move(act)] {
            if (!act())
                Act(act);
        });
    }

    const std::filesystem::path plugins = folder / "plug-ins";
};

TEST_F(DialogProgress, CancelEndsTheScanAtOnceWhileAPluginHangsInTheScanner)
{
    // The plug-in and its time limit take far longer than a test may wait. With one worker the order is that
    // of the list.
    const zettesting::ScopedEnvironment limit(
        "ZET_DEBUG_DATABASE", "zetaudiofilterscan.EntityTimeoutSeconds=86400;zetaudiofilterscan.Workers=1");
    Copy("good/vst2_effect", "a good one");
    Copy("bad/loops_forever", "hanging");
    Copy("good/vst2_synth", "one that is never reached");
    OpenDialog();

    Clock::time_point clicked;
    std::vector<std::string> scannersBefore;
    Act([&] {
        if (!ProgressWindow() || ScanLogs().find("loops from now on") == std::string::npos)
            return false;
        scannersBefore = zettesting::ProcessesWithEnvironment(folder.Path().string());
        clicked = Clock::now();
        QTest::mouseClick(ProgressWindow()->findChild<QPushButton*>(), Qt::LeftButton);
        return true;
    });
    Press(ids::kUpdateButton);
    const std::chrono::duration<double, std::milli> taken = Clock::now() - clicked;
    std::cout << "from the click on Cancel until the list was filled again: " << taken.count() << " ms\n";

    EXPECT_THAT(scannersBefore, ::testing::Not(IsEmpty()));
    EXPECT_EQ(ProgressWindow(), nullptr);
    EXPECT_TRUE(Window().isVisible());
    EXPECT_EQ(TheBanned().BannedBegin(), TheBanned().BannedEnd());
    EXPECT_EQ(PluginList().GetRowCount(), 1) << "what was found until then stays";
    EXPECT_TRUE(shown->alerts.empty());
    EXPECT_THAT(zettesting::WaitForProcessesToEnd(folder.Path().string()), IsEmpty());
}

TEST_F(DialogProgress, APluginThatHangsIsNamedWhileItHangs)
{
    const zettesting::ScopedEnvironment limit("ZET_DEBUG_DATABASE",
                                              "zetaudiofilterscan.EntityTimeoutSeconds=86400");
    const std::string hanging = Copy("bad/loops_forever", "hanging").string();
    OpenDialog();
    std::string drawn;
    const DrawnTexts texts([&](const std::string& text) {
        if (!text.empty())
            drawn += text + "\n";
    });
    Act([&] {
        if (!ProgressWindow() || drawn.find(hanging) == std::string::npos)
            return false;
        QTest::mouseClick(ProgressWindow()->findChild<QPushButton*>(), Qt::LeftButton);
        return true;
    });
    Press(ids::kUpdateButton);
    EXPECT_THAT(drawn, ::testing::HasSubstr(hanging));
}

TEST_F(DialogProgress, InThisProcessEachPluginIsDrawnByNameBeforeItIsLoaded)
{
    zetcore::debug::DebugDatabase::Instance().SetEntry("AudioPluginManager.ShowExternalCheckBox", "true");
    std::vector<std::string> paths;
    for (const char* const title : {"one", "three", "two"})
        paths.push_back(Copy("good/vst2_effect", title).string());
    OpenDialog();
    Node<zetui::controls::UI_Checkbox>(ids::kSeparateProcess).SetChecked(false);
    std::vector<std::string> drawnBeforeLoaded;
    const DrawnTexts texts([&](const std::string& text) {
        if (std::find(paths.begin(), paths.end(), text) == paths.end())
            return;
        const bool isLoaded = !TheRegistry().FindModule(Vst(ToWide(text))).empty();
        const bool isNew = drawnBeforeLoaded.empty() || drawnBeforeLoaded.back() != text;
        if (isNew && !isLoaded)
            drawnBeforeLoaded.push_back(text);
    });
    Press(ids::kUpdateButton);
    EXPECT_EQ(drawnBeforeLoaded, paths);
    EXPECT_EQ(PluginList().GetRowCount(), 3);
}

} // namespace
} // namespace zetaudiopluginhostui
