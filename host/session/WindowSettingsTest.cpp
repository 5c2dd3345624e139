#include "session/WindowSettings.h"

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginmanager {
namespace {

using testing::HasSubstr;
using zetaudiopluginhostui::AudioPluginManagerSettings;
using Bounds = zetcore::geom::RectT<int>;

bool AreEqual(const AudioPluginManagerSettings& one, const AudioPluginManagerSettings& other)
{
    return one.rescanExisting == other.rescanExisting && one.sortColumn == other.sortColumn &&
           one.sortAscending == other.sortAscending && one.hostFlag == other.hostFlag &&
           one.dialogBounds == other.dialogBounds;
}

AudioPluginManagerSettings Sample()
{
    AudioPluginManagerSettings settings;
    settings.rescanExisting = true;
    settings.sortColumn = 4294967295u;
    settings.sortAscending = true;
    settings.dialogBounds = {-1280, -20, 900, 600};
    return settings;
}

TEST(WindowSettings, ComeBackFromTheirText)
{
    EXPECT_TRUE(AreEqual(WindowSettingsFromText(WindowSettingsToText({Sample(), {}})).manager, Sample()));
    EXPECT_TRUE(AreEqual(WindowSettingsFromText(WindowSettingsToText({})).manager, {}));
}

TEST(WindowSettings, HaveTheirDefaultsWhereTheTextDoesNotMentionThem)
{
    EXPECT_TRUE(AreEqual(WindowSettingsFromText("<managerwindow/>").manager, {}));
    const auto some =
        WindowSettingsFromText(
            "<managerwindow version='9.1'><later a='b'/><sort column='3' order='x'/></managerwindow>")
            .manager;
    EXPECT_EQ(some.sortColumn, 3u);
    EXPECT_FALSE(some.sortAscending);
    EXPECT_EQ(some.dialogBounds, Bounds());
}

TEST(WindowSettings, AValueThatCannotBeReadIsNamedWithItsLine)
{
    struct Case
    {
        const char* element;
        const char* attribute;
    };
    for (const Case& each :
         {Case{"<scan rescanexisting='yes'/>", "rescanexisting"}, Case{"<sort column='-1'/>", "column"},
          Case{"<sort column='4294967296'/>", "column"}, Case{"<sort column=''/>", "column"},
          Case{"<sort ascending='1'/>", "ascending"}, Case{"<window left='1.5'/>", "left"},
          Case{"<window top='99999999999999999999'/>", "top"}, Case{"<window width='40000'/>", "width"},
          Case{"<window width='-5'/>", "width"}, Case{"<window height='600px'/>", "height"}}) {
        try {
            WindowSettingsFromText(std::string("<managerwindow>\n") + each.element + "\n</managerwindow>");
            ADD_FAILURE() << "taken: " << each.element;
        } catch (const std::runtime_error& error) {
            EXPECT_THAT(error.what(), HasSubstr("line 2"));
            EXPECT_THAT(error.what(), HasSubstr(each.attribute));
        }
    }
}

TEST(WindowSettings, WhatControlsRememberIsWrittenAndRead)
{
    const ControlValues controls{{"Manager/List/columns", "1 3 2"},
                                 {"Manager/window", "maximised"},
                                 {"odd", "<&\"'>\xC3\xA4"},
                                 {"empty", ""}};
    const std::string text = WindowSettingsToText({Sample(), controls});
    EXPECT_EQ(WindowSettingsFromText(text).controls, controls);
    EXPECT_TRUE(AreEqual(WindowSettingsFromText(text).manager, Sample()));
    const ControlValues lastOfSeveral =
        WindowSettingsFromText("<managerwindow><control key='k' value='1'/><control key='k' value='2' "
                               "later='3'/></managerwindow>")
            .controls;
    EXPECT_EQ(lastOfSeveral, (ControlValues{{"k", "2"}}));
}

TEST(WindowSettings, AValueOfNoControlIsPassedOver)
{
    EXPECT_EQ(WindowSettingsFromText("<managerwindow><control value='1'/><control key='' value='2'/>"
                                     "<control/></managerwindow>")
                  .controls,
              ControlValues());
}

TEST(WindowSettings, WhatIsNoSettingsTextIsRefused)
{
    for (const char* text : {"", "text", "<managerwindow>", "<other/>", "<managerwindow"})
        EXPECT_THROW(WindowSettingsFromText(text), std::runtime_error) << text;
}

class WindowSettingsInAFolder : public zettesting::HostFixture
{
  protected:
    const std::filesystem::path file = prefs / "PluginManagerWindow.xml";
};

TEST_F(WindowSettingsInAFolder, AreKeptInAFile)
{
    EXPECT_TRUE(AreEqual(LoadWindowSettings().manager, {}));
    SaveWindowSettings(Sample());
    EXPECT_TRUE(AreEqual(LoadWindowSettings().manager, Sample()));
}

TEST_F(WindowSettingsInAFolder, KeepTheValuesOfControlsThatAreNotWrittenAnew)
{
    SaveWindowSettings(Sample(), {{"a", "1"}, {"b", "2"}});
    SaveWindowSettings({}, {{"b", "3"}, {"c", "4"}});
    EXPECT_EQ(LoadWindowSettings().controls, (ControlValues{{"a", "1"}, {"b", "3"}, {"c", "4"}}));
    EXPECT_TRUE(AreEqual(LoadWindowSettings().manager, {}));
}

TEST_F(WindowSettingsInAFolder, AFileThatWasDamagedMeanwhileIsKeptAsideToo)
{
    zettesting::WriteAll(file, "damage");
    testing::internal::CaptureStderr();
    SaveWindowSettings(Sample(), {{"a", "1"}});
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr(file.string()));
    EXPECT_EQ(zettesting::ReadAll(file.string() + ".damaged"), "damage");
    EXPECT_EQ(LoadWindowSettings().controls, (ControlValues{{"a", "1"}}));
}

TEST_F(WindowSettingsInAFolder, ADamagedFileIsSaidKeptAsideAndGivesTheDefaults)
{
    const std::string damage = "<managerwindow>\n<window width='wide'/></managerwindow>";
    zettesting::WriteAll(file, damage);
    testing::internal::CaptureStderr();
    EXPECT_TRUE(AreEqual(LoadWindowSettings().manager, {}));
    const std::string said = testing::internal::GetCapturedStderr();
    EXPECT_THAT(said, HasSubstr(file.string()));
    EXPECT_THAT(said, HasSubstr("line 2"));
    EXPECT_EQ(zettesting::ReadAll(file.string() + ".damaged"), damage);
}

TEST_F(WindowSettingsInAFolder, WhatCannotBeSavedIsAFileError)
{
    std::filesystem::create_directory(file);
    EXPECT_THROW(SaveWindowSettings({}), zetcore::filesupport::file_exception);
}

} // namespace
} // namespace zetaudiopluginmanager
