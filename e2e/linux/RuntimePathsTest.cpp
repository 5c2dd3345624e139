// Tests the folders in which the system's loader looks for the libraries of our programs.
#include <functional>

#include <gmock/gmock.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/TemporaryFolder.h>

#include "ElfFile.h"

namespace {

namespace fs = std::filesystem;
using zettesting::ChildProcess;

/// Checks every program and library below the folder. Returns their number.
int Check(const fs::path& folder, const std::function<void(const fs::path&, const std::string& entry)>& check)
{
    int files = 0;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (!entry.is_regular_file() || entry.is_symlink())
            continue;
        const auto file = ElfFile::Read(entry.path());
        files += file.has_value();
        for (const std::string& path : file ? file->RuntimePath() : std::vector<std::string>())
            check(entry.path(), path);
    }
    return files;
}

zettesting::ChildResult RunProgram(const fs::path& program, std::vector<std::string> arguments,
                                   const fs::path& folder = {})
{
    ChildProcess::Options options;
    options.program = program;
    options.arguments = std::move(arguments);
    options.folder = folder;
    return ChildProcess::Run(options);
}

TEST(RuntimePaths, OfTheBuildTreeNeverLeadToTheCurrentFolder)
{
    for (const auto& [folder, least] :
         {std::pair{"bin", 20}, std::pair{"plugins", 20}, std::pair{"fakescanner", 1}}) {
        const int files =
            Check(fs::path(ZET_BUILD) / folder, [](const fs::path& file, const std::string& entry) {
                EXPECT_TRUE(entry.starts_with("$ORIGIN") || entry.starts_with("/")) << file << ": " << entry;
            });
        EXPECT_GE(files, least) << folder;
    }
}

TEST(RuntimePaths, OfWhatIsInstalledLeadToItsOwnFoldersOnly)
{
    const zettesting::TemporaryFolder prefix;
    const auto installed =
        RunProgram(ZET_CMAKE, {"--install", ZET_BUILD, "--prefix", prefix.Path().string()});
    ASSERT_EQ(installed.exitStatus, 0) << installed.error;
    const int files = Check(prefix.Path(), [&](const fs::path& file, const std::string& entry) {
        constexpr std::string_view origin = "$ORIGIN";
        ASSERT_TRUE(entry == origin || entry.starts_with("$ORIGIN/")) << file << ": " << entry;
        const fs::path leadsTo =
            (file.parent_path() / ("." + entry.substr(origin.size()))).lexically_normal();
        EXPECT_TRUE(leadsTo.string().starts_with(prefix.Path().string())) << file << ": " << entry;
    });
    EXPECT_EQ(files, 10) << "eight libraries and two programs";
}

TEST(RuntimePaths, ALibraryInTheCurrentFolderIsNotLoaded)
{
    const zettesting::TemporaryFolder folder;
    zettesting::WriteAll(folder / "libstdc++.so.6", "no library");
    for (const char* const program : {"zetaudiopluginmanager", "zetaudiofilterscan"}) {
        const auto result = RunProgram(fs::path(ZET_BUILD) / "bin" / program, {"--version"}, folder.Path());
        EXPECT_THAT(result.error, testing::Not(testing::HasSubstr("libstdc++"))) << program;
        EXPECT_NE(result.exitStatus, 127) << program << ": the loader could not start it";
    }
}

} // namespace
