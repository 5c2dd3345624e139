#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <zettesting/ChildProcess.h>
#include <zettesting/TemporaryFolder.h>
#include <zettesting/TestPlugins.h>

/// One object of `list --json`. `path` is the text that the program prints.
struct ListedPlugin
{
    std::string technology, path, subcomponent, name, version, vendor, id, category;
    bool enabled = false;
    bool effect = false;
    bool instrument = false;
    std::string status, reason;
    /// Empty when the value is null.
    std::string fileTime, bannedAt;

    bool IsBanned() const { return status == "banned"; }
    friend auto operator<=>(const ListedPlugin&, const ListedPlugin&) = default;
    friend void PrintTo(const ListedPlugin& plugin, std::ostream* stream)
    {
        *stream << plugin.status << " " << plugin.name << " " << plugin.path << "|" << plugin.subcomponent;
    }
};

/// The object of `scan --json`.
struct ScanSummary
{
    int exitStatus = -1;
    long long scanned = -1;
    long long found = -1;
    /// The paths of the plug-ins.
    std::vector<std::string> added, updated, removed, banned, triedAgain, unreadable, passedOver, unreached;
    /// The reasons of all of these plug-ins, by path.
    std::map<std::string, std::string> reasons;
    std::string end, reason;
    double seconds = -1;
    std::string messages;
};

/// Runs the real host program with the real scanner in surroundings of its own: preferences, home and runtime
/// folder are new, and `plugins` is the only plug-in folder. When the test ends, none of its processes may be
/// left.
class ManagerFixture : public ::testing::Test
{
  protected:
    ManagerFixture();
    ~ManagerFixture() override;

    /// The program's command line with this test's preferences folder.
    zettesting::ChildProcess::Options Command(std::vector<std::string> arguments) const;
    zettesting::ChildResult Run(std::vector<std::string> arguments) const;
    /// Runs the program and expects exit status 0 within the time limit.
    std::string RunWell(std::vector<std::string> arguments) const;
    std::vector<ListedPlugin> List(std::vector<std::string> arguments = {}) const;
    /// The paths of `List`, each once.
    std::vector<std::string> ListedPaths(std::vector<std::string> arguments = {}) const;
    std::optional<ListedPlugin> FindListed(const std::filesystem::path& path) const;
    ScanSummary Scan(std::vector<std::string> arguments = {}) const;
    /// The text of the logs of scanners and plug-ins.
    std::string ScanLogs() const;
    void UseFolders(const std::vector<std::filesystem::path>& folders) const;
    /// Waits until no process of the test is left.
    void ExpectNoProcessLeft() const;
    /// The end of `scan --json --progress json` that was cancelled at the second of two plug-ins: whole
    /// lines, nobody banned, and no process left.
    void ExpectCancelledAtTheSecond(const zettesting::ChildResult& result) const;

    /// Copies the program with its libraries, but without the scanner. From then on the copy is used. Returns
    /// its folder.
    std::filesystem::path CopyProgram();

    /// Sets an entry of the programs' debug databases. Later ones of the same name count.
    void SetSwitch(const std::string& key, const std::string& value);

    /// Lets sample plug-ins keep a note there while they are scanned in the scanner process.
    void AllowWriting(const std::filesystem::path& path)
    {
        SetSwitch("zetaudiofilterscan.WritableFolders", path.string());
    }

    /// Copies a sample plug-in to `plugins`.
    std::filesystem::path Install(const std::string& plugin, const std::string& title) const;

    zettesting::TemporaryFolder folder;
    std::filesystem::path prefs, plugins;
    /// Added to this process's environment for the program.
    std::map<std::string, std::optional<std::string>> environment;
    std::filesystem::path program;
};

/// The folder with the program and the scanner.
std::filesystem::path ProgramFolder();
std::string WithExecutableSuffix(const std::string& name);

std::vector<ListedPlugin> ReadList(const std::string& json);
ScanSummary ReadScanSummary(const zettesting::ChildResult& result);
