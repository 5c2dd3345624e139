// Tests the package for a machine that has nothing of ours (cmake/ZetPackage.cmake).

#include <algorithm>
#include <cctype>
#include <fstream>
#include <set>

#include <gmock/gmock.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/TemporaryFolder.h>
#include <zettesting/TestPlugins.h>

#include "PortableExecutable.h"

namespace {

namespace fs = std::filesystem;
using zettesting::ChildProcess;
using zettesting::ChildResult;

const fs::path package = ZET_PACKAGE_FOLDER;

std::string LowerCase(std::string text)
{
    std::ranges::transform(text, text.begin(),
                           [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return text;
}

std::set<std::string> SystemLibraries()
{
    std::ifstream stream(ZET_SYSTEM_LIBRARIES);
    std::set<std::string> names;
    for (std::string line; std::getline(stream, line);)
        if (!line.empty() && line.front() != '#')
            names.insert(line);
    return names;
}

bool IsProgramOrLibrary(const fs::path& file)
{
    const std::string extension = LowerCase(file.extension().string());
    return extension == ".exe" || extension == ".dll";
}

TEST(Package, HoldsEveryLibraryThatItsProgramsAndLibrariesImport)
{
    std::set<std::string> present = SystemLibraries();
    ASSERT_THAT(present, testing::Not(testing::IsEmpty()));
    for (const fs::directory_entry& entry : fs::directory_iterator(package))
        present.insert(LowerCase(entry.path().filename().string()));

    int files = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(package)) {
        if (!IsProgramOrLibrary(entry.path()))
            continue;
        ++files;
        for (const std::string& import : PortableExecutable(entry.path()).Imports())
            EXPECT_TRUE(present.contains(LowerCase(import)))
                << entry.path().filename() << " needs " << import;
    }
    EXPECT_GT(files, 12);
}

/// What a library or program needs of the package, and what that needs, and so on. Lower case.
std::set<std::string> NeededOfPackage(const std::string& file)
{
    std::set<std::string> needed;
    std::vector<std::string> toLookAt = {file};
    while (!toLookAt.empty()) {
        const fs::path next = package / toLookAt.back();
        toLookAt.pop_back();
        for (const std::string& import : PortableExecutable(next).Imports())
            if (fs::exists(package / import) && needed.insert(LowerCase(import)).second)
                toLookAt.push_back(import);
    }
    return needed;
}

TEST(Package, HasAScanForHostsWithoutWindowsThatNeedsNoQt)
{
    EXPECT_THAT(NeededOfPackage("zetaudiopluginhostui.dll"), testing::Contains("qt6widgets.dll"));
    for (const char* const file : {"zetaudiopluginscan.dll", "zetaudiofilterscan.exe"}) {
        const std::set<std::string> needed = NeededOfPackage(file);
        EXPECT_THAT(needed, testing::Contains("zetaudiopluginhost.dll")) << file;
        EXPECT_THAT(needed, testing::Each(testing::Not(testing::StartsWith("qt6")))) << file;
        EXPECT_THAT(needed, testing::Not(testing::Contains("zetui.dll"))) << file;
    }
}

TEST(Package, HoldsNoSymbolsForDebuggers)
{
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(package))
        if (IsProgramOrLibrary(entry.path())) {
            EXPECT_EQ(PortableExecutable(entry.path()).SymbolCount(), 0u) << entry.path();
        }
}

TEST(Package, HoldsWhatIsLoadedByNameAndTheLicences)
{
    for (const char* const name :
         {"zetaudiopluginmanager.exe", "zetaudiofilterscan.exe", "zetaudiopluginhostui.dll",
          "zetaudiopluginscan.dll", "platforms/qwindows.dll", "lang/en.txt", "lang/ja.txt",
          "lang/qtbase_de.qm", "lang/qtbase_zh_CN.qm", "LICENSE.txt", "README.txt", "licences/qt.txt",
          "licences/qt-translations.txt", "licences/LGPL-3.txt", "licences/GPL-3.txt", "licences/boost.txt",
          "licences/pugixml.txt", "licences/CLI11.txt"}) {
        EXPECT_TRUE(fs::is_regular_file(package / name)) << name;
        EXPECT_GT(fs::file_size(package / name), 0u) << name;
    }
}

/// A copy of the package in another folder, run without anything but the system.
class CopiedPackage : public testing::Test
{
  protected:
    CopiedPackage() : program(folder / L"Zürich 東京" / "zetaudiopluginmanager.exe")
    {
        fs::copy(package, program.parent_path(), fs::copy_options::recursive);
    }

    ChildResult Run(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), {"--prefs", (folder / "prefs").string()});
        return ChildProcess::Run({.program = program,
                                  .arguments = std::move(arguments),
                                  .environment = {{"PATH", "C:\\windows\\system32;C:\\windows"},
                                                  {"WINEPATH", std::nullopt},
                                                  {"QT_PLUGIN_PATH", std::nullopt},
                                                  {"VST_PATH", std::nullopt}},
                                  .folder = folder.Path()});
    }

    zettesting::TemporaryFolder folder;
    fs::path program;
};

TEST_F(CopiedPackage, ScansInTheScannerProcess)
{
    const fs::path plugins = folder / "plugins";
    fs::create_directories(plugins);
    fs::copy(zettesting::TestPlugin("good/vst2_effect"), plugins);
    ASSERT_EQ(Run({"folders", "add", plugins.string()}).exitStatus, 0);

    const ChildResult scan = Run({"scan"});
    EXPECT_EQ(scan.exitStatus, 0) << scan.error;
    const ChildResult list = Run({"list"});
    EXPECT_EQ(list.exitStatus, 0) << list.error;
    EXPECT_THAT(list.output, testing::HasSubstr("vst2_effect"));
}

} // namespace
