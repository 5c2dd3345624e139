#include <filesystem>
#include <sstream>
#include <string>

#include <QGuiApplication>
#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zettesting/NoDisplay.h>
#include <zetui/application/Application.h>

#include "commands/CommandLine.h"
#include "testing/ManageFixture.h"

namespace zetaudiopluginmanager {
namespace {

using testing::HasSubstr;

class ManageCommand : public ManageFixture
{};

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
