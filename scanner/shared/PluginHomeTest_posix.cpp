#include "PluginHome.h"

#include <map>

#include <gmock/gmock.h>
#include <unistd.h>
#include <zettesting/Environment.h>
#include <zettesting/TemporaryFolder.h>

namespace zetaudiofilterscan {
namespace {

namespace fs = std::filesystem;
using zettesting::ReadAll;
using zettesting::ScopedEnvironment;
using zettesting::WriteAll;

class PluginHome : public ::testing::Test
{
  protected:
    PluginHome()
    {
        fs::create_directories(users / ".config" / "synth");
        fs::create_directories(users / ".local" / "share" / "banks");
        fs::create_directories(users / "documents");
        WriteAll(users / ".config" / "synth" / "settings", "old");
        WriteAll(users / ".rc", "rc");
        fs::create_directory(folder / "runtime");
        fs::permissions(folder / "runtime", fs::perms::owner_all);
    }
    std::map<std::string, std::string> Variables() const
    {
        const auto variables = PluginHomeVariables(home);
        return {variables.begin(), variables.end()};
    }

    zettesting::TemporaryFolder folder;
    const fs::path users = folder / "user", home = folder / "runtime" / "plugins";
    ScopedEnvironment runtime{"XDG_RUNTIME_DIR", (folder / "runtime").string()};
    ScopedEnvironment usersHome{"HOME", users.string()};
    ScopedEnvironment config{"XDG_CONFIG_HOME", std::nullopt}, cache{"XDG_CACHE_HOME", std::nullopt},
        data{"XDG_DATA_HOME", std::nullopt}, state{"XDG_STATE_HOME", std::nullopt};
};

TEST_F(PluginHome, ShowsTheUsersFilesAndTakesNewOnes)
{
    MakePluginHome(home);
    const fs::path shown = Variables().at("HOME");
    EXPECT_EQ(ReadAll(shown / ".rc"), "rc");
    EXPECT_EQ(ReadAll(shown / ".config" / "synth" / "settings"), "old");
    EXPECT_TRUE(fs::exists(shown / ".local" / "share" / "banks"));
    WriteAll(shown / ".new", "new");
    WriteAll(shown / ".config" / "new", "new");
    WriteAll(shown / ".local" / "share" / "new", "new");
    EXPECT_FALSE(fs::exists(users / ".new"));
    EXPECT_FALSE(fs::exists(users / ".config" / "new"));
    EXPECT_FALSE(fs::exists(users / ".local" / "share" / "new"));
    for (const char* folderOfTheSystem : {".config", ".cache", ".local/share", ".local/state"})
        EXPECT_TRUE(fs::is_directory(shown / folderOfTheSystem)) << folderOfTheSystem;
    EXPECT_FALSE(fs::exists(users / ".cache"));
}

TEST_F(PluginHome, IsForItsOwnerAlone)
{
    MakePluginHome(home);
    EXPECT_EQ(fs::status(home).permissions(), fs::perms::owner_all);
}

TEST_F(PluginHome, FollowsTheVariablesThatTheUserHas)
{
    fs::create_directories(folder / "settings" / "synth");
    const ScopedEnvironment own("XDG_CONFIG_HOME", (folder / "settings").string());
    const ScopedEnvironment relative("XDG_CACHE_HOME", "not absolute");
    MakePluginHome(home);
    const auto variables = Variables();
    EXPECT_TRUE(fs::exists(fs::path(variables.at("XDG_CONFIG_HOME")) / "synth"));
    EXPECT_FALSE(variables.contains("XDG_CACHE_HOME"));
    EXPECT_FALSE(variables.contains("XDG_DATA_HOME"));
    for (const char* name : {"TMPDIR", "TMP", "TEMP"})
        EXPECT_TRUE(fs::is_directory(variables.at(name))) << name;
    for (const auto& [name, value] : variables)
        EXPECT_TRUE(value.starts_with(home.string())) << name;
}

TEST_F(PluginHome, IsMadeWithoutAHomeOfTheUsers)
{
    const ScopedEnvironment none("HOME", std::nullopt);
    MakePluginHome(home);
    EXPECT_FALSE(Variables().contains("HOME"));
    EXPECT_TRUE(fs::is_directory(Variables().at("TMPDIR")));
}

TEST_F(PluginHome, IsRemovedWithoutWhatItsLinksLeadTo)
{
    MakePluginHome(home);
    WriteAll(home / "tmp" / "left", "left");
    fs::create_directory_symlink(users, home / "tmp" / "trap");
    RemovePluginHome(home);
    EXPECT_FALSE(fs::exists(home));
    EXPECT_EQ(ReadAll(users / ".config" / "synth" / "settings"), "old");
    EXPECT_EQ(ReadAll(users / ".rc"), "rc");
}

TEST_F(PluginHome, IsNewWhenItIsMadeAgain)
{
    MakePluginHome(home);
    WriteAll(home / "tmp" / "left", "left");
    MakePluginHome(home);
    EXPECT_FALSE(fs::exists(home / "tmp" / "left"));
}

TEST_F(PluginHome, OneThatWasLeftIsRemovedWhenItsSupervisorIsGone)
{
    constexpr std::uint64_t nobody = 4'194'305; // above the highest number that the system gives
    const fs::path left = PluginHomePath(nobody), living = PluginHomePath(::getpid());
    EXPECT_EQ(left.parent_path(), folder / "runtime");
    MakePluginHome(left);
    MakePluginHome(living);
    fs::create_directory(folder / "runtime" / "zetaudiofilterscan-home-odd");
    RemoveAbandonedPluginHomes();
    EXPECT_FALSE(fs::exists(left));
    EXPECT_TRUE(fs::exists(living));
    EXPECT_TRUE(fs::exists(folder / "runtime" / "zetaudiofilterscan-home-odd"));
}

} // namespace
} // namespace zetaudiofilterscan
