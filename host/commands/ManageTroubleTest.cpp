#include <filesystem>
#include <string>
#include <vector>

#include <QLabel>
#include <QTest>
#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>

#include "testing/ManageFixture.h"

namespace zetaudiopluginmanager {
namespace {

using testing::HasSubstr;

/// What the user is told when something is amiss before or after the manager's window is open.
class ManageTrouble : public ManageFixture
{};

TEST_F(ManageTrouble, ACrashIsToldInAWindowBeforeTheManagerOpens)
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

TEST_F(ManageTrouble, ADamagedSettingsFileOpensTheWindowAllTheSame)
{
    zettesting::WriteAll(prefs / "PluginManagerWindow.xml", "<managerwindow");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Run({"manage"}, Cancel), 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("PluginManagerWindow.xml"));
    EXPECT_TRUE(std::filesystem::exists(prefs / "PluginManagerWindow.xml.damaged"));
}

TEST_F(ManageTrouble, ADamagedListIsToldInANoteAndIsExitStatusOne)
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

TEST_F(ManageTrouble, SettingsThatCannotBeSavedAreExitStatusOne)
{
    std::filesystem::create_directory(prefs / "PluginManagerWindow.xml");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Run({"manage"}, Cancel), 1);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("PluginManagerWindow.xml"));
}

TEST_F(ManageTrouble, ARegistryThatTheDialogCannotSaveIsExitStatusOne)
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

} // namespace
} // namespace zetaudiopluginmanager
