#include "ManagerFixture.h"

#include <algorithm>
#include <sstream>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/string/Utf.h>

using zettesting::ChildProcess;
using zettesting::ChildResult;

namespace {

std::filesystem::path MakeFolder(const std::filesystem::path& path)
{
    std::filesystem::create_directories(path);
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
    return path;
}

} // namespace

std::filesystem::path ProgramFolder()
{
    return zetcore::string::UTF16to8(zetcore::filesupport::commondirs::ExecutableDir().FullPath());
}

std::string WithExecutableSuffix(const std::string& name)
{
    return zettesting::ModuleSuffix() == ".dll" ? name + ".exe" : name;
}

ManagerFixture::ManagerFixture()
    : prefs(folder / "prefs"), plugins(MakeFolder(folder / "plugins")),
      program(ProgramFolder() / WithExecutableSuffix("zetaudiopluginmanager"))
{
    const std::filesystem::path home = MakeFolder(folder / "home");
    environment = {{"XDG_RUNTIME_DIR", MakeFolder(folder / "runtime").string()},
                   {"XDG_CONFIG_HOME", (home / "config").string()},
                   {"HOME", home.string()},
                   {"APPDATA", (home / "config").string()},
                   {"LOCALAPPDATA", (home / "local").string()},
                   {"USERPROFILE", home.string()},
                   {"CLAP_PATH", std::nullopt},
                   {"VST_PATH", std::nullopt},
                   {"ZET_DEBUG_DATABASE", std::nullopt},
                   {"ZET_TRACE", std::nullopt},
                   {"NO_COLOR", std::nullopt},
                   {"LC_ALL", "C.UTF-8"},
                   {"QT_QPA_PLATFORM", std::nullopt},
                   {"DISPLAY", std::nullopt},
                   {"WAYLAND_DISPLAY", std::nullopt}};
    UseFolders({plugins});
}

ManagerFixture::~ManagerFixture()
{
    ExpectNoProcessLeft();
}

ChildProcess::Options ManagerFixture::Command(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"--prefs", prefs.string()});
    return {program, std::move(arguments), environment, folder.Path()};
}

ChildResult ManagerFixture::Run(std::vector<std::string> arguments) const
{
    return ChildProcess::Run(Command(std::move(arguments)));
}

std::string ManagerFixture::RunWell(std::vector<std::string> arguments) const
{
    const std::string shown = testing::PrintToString(arguments);
    const ChildResult result = Run(std::move(arguments));
    EXPECT_EQ(result.exitStatus, 0) << shown << "\n" << result.error;
    EXPECT_FALSE(result.timedOut) << shown;
    return result.output;
}

std::vector<ListedPlugin> ManagerFixture::List(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"list", "--json"});
    return ReadList(RunWell(std::move(arguments)));
}

std::vector<std::string> ManagerFixture::ListedPaths(std::vector<std::string> arguments) const
{
    std::vector<std::string> paths;
    for (const ListedPlugin& plugin : List(std::move(arguments)))
        paths.push_back(plugin.path);
    std::sort(paths.begin(), paths.end());
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    return paths;
}

std::optional<ListedPlugin> ManagerFixture::FindListed(const std::filesystem::path& path) const
{
    for (ListedPlugin& plugin : List()) {
        if (plugin.path == path.string())
            return std::move(plugin);
    }
    return std::nullopt;
}

ScanSummary ManagerFixture::Scan(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), {"scan", "--json"});
    return ReadScanSummary(Run(std::move(arguments)));
}

std::string ManagerFixture::ScanLogs() const
{
    std::string logs;
    if (std::filesystem::exists(prefs / "scan-logs"))
        for (const auto& entry : std::filesystem::directory_iterator(prefs / "scan-logs"))
            logs += zettesting::ReadAll(entry.path());
    return logs;
}

void ManagerFixture::UseFolders(const std::vector<std::filesystem::path>& folders) const
{
    std::istringstream lines(RunWell({"folders", "list"}));
    std::vector<std::string> remove{"folders", "remove"}, add{"folders", "add"};
    for (std::string line; std::getline(lines, line);)
        remove.push_back(line.substr(line.find_first_of("/\\") == std::string::npos ? 0 : 6));
    if (remove.size() > 2)
        RunWell(remove);
    for (const std::filesystem::path& each : folders)
        add.push_back(each.string());
    if (add.size() > 2)
        RunWell(add);
}

void ManagerFixture::ExpectNoProcessLeft() const
{
    EXPECT_EQ(zettesting::WaitForProcessesToEnd(folder.Path().string()), std::vector<std::string>());
}

void ManagerFixture::ExpectCancelledAtTheSecond(const zettesting::ChildResult& result) const
{
    using testing::HasSubstr;
    EXPECT_EQ(result.exitStatus, 130) << result.error;
    std::vector<std::string> lines;
    std::istringstream output(result.output);
    for (std::string line; std::getline(output, line);)
        lines.push_back(line);
    ASSERT_EQ(lines.size(), 3u) << result.output;
    EXPECT_THAT(lines[0], HasSubstr("\"status\":\"working\""));
    EXPECT_THAT(lines[1], HasSubstr("\"done\":2,\"total\":2"));
    EXPECT_THAT(lines[1], HasSubstr("\"status\":\"unscanned\""));
    EXPECT_THAT(lines[2], testing::StartsWith("{\"event\":\"summary\","));
    EXPECT_THAT(lines[2], HasSubstr("\"end\":\"cancelled\""));
    EXPECT_EQ(lines[2].back(), '}');
    ExpectNoProcessLeft();
    EXPECT_EQ(List({"--banned"}).size(), 0u);
}

std::filesystem::path ManagerFixture::CopyProgram()
{
    const auto bin = folder / "bin";
    std::filesystem::create_directory(bin);
    for (const auto& entry : std::filesystem::directory_iterator(ProgramFolder())) {
        const std::string name = entry.path().filename().string();
        if (name.starts_with("libzet") || name.ends_with(".dll"))
            std::filesystem::copy(entry.path(), bin / name);
    }
    std::filesystem::copy(program, bin / program.filename());
    program = bin / program.filename();
    return bin;
}

void ManagerFixture::SetSwitch(const std::string& key, const std::string& value)
{
    auto& variable = environment["ZET_DEBUG_DATABASE"];
    variable = (variable ? *variable + ";" : "") + key + "=" + value;
}

std::filesystem::path ManagerFixture::Install(const std::string& plugin, const std::string& title) const
{
    return zettesting::CopyTestPlugin(plugin, plugins, title);
}
