#include "report/Report.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <thread>

#include <zetaudiofilterhost/PluginFormat.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/string/TerminalText.h>
#include <zetcore/string/Utf.h>
#include <zetscanprotocol/ScanLogFormat.h>
#include <zetui/application/Application.h>

#include "output/PluginRow.h"
#include "output/PluginTable.h"
#include "output/TimeText.h"
#include "report/FolderFacts.h"
#include "report/ReportText.h"
#include "report/SystemFacts.h"
#include "scan/ScannerProgram.h"
#include "session/Language.h"
#include "terminal/Console.h"
#include "terminal/DisplayText.h"
#include "terminal/PluginFile.h"

namespace zetaudiopluginmanager {

namespace {

using zetaudiofilterhost::PluginFormat;
using zetaudiofilterhost::PluginFormats;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetaudiofilterhost::TechnologyType;
using zetaudiopluginhost::BanInfo;
using zetaudiopluginhost::BannedPluginManager;
using zetcore::filesupport::Dir;
using zetcore::filesupport::File;
using zetcore::filesupport::FileUtils;
using zetcore::string::UTF16to8;

constexpr std::size_t kibibyte = 1024;
// Private words may be longer when they are replaced, so the whole is bound, too.
constexpr std::size_t mostOfReport = 2048 * kibibyte;
// The line that says how much is left out has room behind what is kept.
constexpr std::size_t mostOfContent = mostOfReport - kibibyte;
// Each of the sections that grow with the number of plug-ins.
constexpr std::size_t mostOfPlugins = 256 * kibibyte;
constexpr std::size_t mostOfFolders = 64 * kibibyte;
constexpr std::size_t mostOfFileNames = 32 * kibibyte;
constexpr std::size_t mostOfSwitches = 32 * kibibyte;
constexpr std::size_t mostOfVariable = 4 * kibibyte;
constexpr std::size_t mostOfLog = 64 * kibibyte;
constexpr std::size_t mostOfLogs = 512 * kibibyte;
// Folders may hold anything, and be far away.
constexpr std::size_t mostFileNames = 10'000;
constexpr std::size_t mostFiles = 200;
constexpr std::size_t mostFolders = 200;
// Files that are larger are none that these programs have written.
constexpr std::uint64_t largestLog = 16 << 20;
constexpr std::uint64_t largestSwitches = 1 << 20;

/// The variables that change what our programs do (docs/files.md).
constexpr const char* variables[] = {"ZET_DEBUG_DATABASE",
                                     "ZET_TRACE",
                                     "VST_PATH",
                                     "CLAP_PATH",
                                     "XDG_CONFIG_HOME",
                                     "XDG_RUNTIME_DIR",
                                     "APPDATA",
                                     "LC_ALL",
                                     "LC_MESSAGES",
                                     "LANG",
                                     "DISPLAY",
                                     "WAYLAND_DISPLAY",
                                     "QT_QPA_PLATFORM",
                                     "NO_COLOR",
                                     "COLUMNS",
                                     "TERM"};

/// Does one part of the report. A part that fails says why, and the others follow.
void Attempt(ReportText& report, const std::function<void()>& part)
{
    try {
        part();
    } catch (const std::exception& error) {
        report.Line(std::string("[cannot be read: ") + error.what() + "]");
    }
}

std::string Shortened(const std::string& value, std::size_t most)
{
    return value.size() <= most ? value : value.substr(0, most) + " [...]";
}

std::string Now()
{
    return TimeText(
        std::chrono::floor<std::chrono::seconds>(std::chrono::system_clock::now().time_since_epoch()));
}

void AddVersions(ReportText& report, const std::string& version)
{
    report.Section("Versions");
    report.Line(version);
    report.Fact("compiler", __VERSION__);
    const ScannerProgramState state = LookAtScannerProgram();
    report.Fact("scanner", state == ScannerProgramState::Startable
                               ? UTF16to8(ScannerProgramPath())
                               : DescribeFailedStart(state, ScannerProgramPath()));
}

void AddSystem(ReportText& report)
{
    report.Section("System");
    report.Line(DescribeSystem());
    report.Fact("processors", std::to_string(std::thread::hardware_concurrency()));
    report.Fact("language", SystemLanguage());
    report.Fact("display", zetui::ui::IsDisplayAvailable() ? "yes" : "no");
    for (const char* variable : variables)
        report.Fact(variable, Shortened(EnvironmentText(variable), mostOfVariable));
}

void AddPreferences(ReportText& report, const Dir& preferences)
{
    report.Section("Preferences folder");
    report.Line(UTF16to8(preferences.FullPath()));
    Attempt(report,
            [&] { report.Beginning(FileLines(preferences, mostFiles, mostFileNames), mostOfFileNames); });

    // The file is there while plug-ins are loaded in the host's process, and after one has brought it down.
    const std::wstring markerName =
        zetaudiopluginhostui::AudioPluginScan::GetLastScannedPluginPath().GetTitle();
    if (const File marker(preferences, markerName); marker.Exists())
        Attempt(report, [&] {
            report.Fact(UTF16to8(markerName) + " names",
                        Shortened(FileUtils::ReadFile(marker, largestSwitches), mostOfVariable));
        });

    report.Section("Switches (DebugDatabase.txt)");
    Attempt(report, [&] {
        const File file(preferences, L"DebugDatabase.txt");
        if (file.Exists())
            report.Beginning(FileUtils::ReadFile(file, largestSwitches), mostOfSwitches);
        else
            report.Line("There is no such file.");
    });
}

void AddFolders(ReportText& report, const File& registryFile)
{
    report.Section("Folders");
    Attempt(report, [&] {
        if (!registryFile.Exists()) {
            report.Line("There is no list yet, so the first start sets the default folders.");
            return;
        }
        PluginModuleInfoManager registry;
        registry.AddConfiguration(FileUtils::ReadFile(registryFile), true);
        std::vector<SearchedFolder> folders;
        for (const PluginFormat& format : PluginFormats()) {
            const auto technology = registry.GetPluginTechnology(format.type);
            for (auto folder = technology->DirectoryBegin(); folder != technology->DirectoryEnd(); ++folder)
                folders.push_back({std::wstring(format.name), *folder});
        }
        report.Beginning(SearchedFolderLines(folders, mostFolders), mostOfFolders);
    });
}

std::vector<PluginModuleInfoManager::InfoPtr> RecordsOfEveryFormat(const File& registryFile)
{
    std::vector<TechnologyType> technologies;
    for (const PluginFormat& format : PluginFormats())
        technologies.push_back(format.type);
    return PluginModuleInfoManager::RecordsInFile(registryFile, technologies);
}

/// The files that scans have found, and that no list shows.
std::string OthersText(const std::vector<PluginModuleInfoManager::InfoPtr>& records)
{
    std::string lines;
    for (const auto& info : records) {
        if (IsPassedOver(info->GetStatus()))
            lines += UTF16to8(info->GetLocator().ToString()) + "\n    " + info->GetReason() + "\n";
    }
    return lines.empty() ? "There are none.\n" : lines;
}

void AddPlugins(ReportText& report, const Dir& preferences)
{
    std::vector<PluginModuleInfoManager::InfoPtr> records;
    std::map<PluginLocator, BanInfo> bans;
    const auto table = [&](RowChoice choice) {
        std::vector<PluginRow> rows = CollectRows(records, bans);
        std::erase_if(rows, [choice](const PluginRow& row) { return !IsChosen(row, choice); });
        report.Beginning(FormatPluginTable(std::move(rows), {}, choice), mostOfPlugins);
    };

    report.Section("Plug-ins that do not work");
    Attempt(report, [&] {
        bans = BannedPluginManager::BansInFile({preferences, BannedPluginManager::GetSettingsFileName()});
    });
    Attempt(report, [&] {
        records = RecordsOfEveryFormat({preferences, PluginModuleInfoManager::GetSettingsFileName()});
    });
    Attempt(report, [&] { table(RowChoice::Failed); });

    report.Section("Bans");
    std::string lines;
    for (const auto& [locator, ban] : bans) {
        const std::string since = TimeText(std::chrono::seconds(ban.time));
        lines +=
            UTF16to8(locator.ToString()) + "\n    since " + (since.empty() ? "an unknown time" : since) +
            (ban.couldNotLoad                             ? ", tried again by every scan"
             : ban.stamp.size == 0 && ban.stamp.time == 0 ? ", every build, until it is reloaded"
                                                          : ", this build: " + SizeText(ban.stamp.size)) +
            "\n";
    }
    report.Beginning(lines.empty() ? "There are none.\n" : lines, mostOfPlugins);

    report.Section("Files that are no plug-ins, and those that are left out");
    report.Beginning(OthersText(records), mostOfFolders);

    report.Section("Plug-ins that are on");
    Attempt(report, [&] { table(RowChoice::Enabled); });
    report.Section("Plug-ins that are off");
    Attempt(report, [&] { table(RowChoice::Disabled); });
}

void AddLogs(ReportText& report, const Dir& preferences)
{
    report.Section("Logs of scans, the newest first");
    Attempt(report, [&] {
        const Dir folder(File(preferences, zetscanprotocol::logFolder).FullPath());
        if (!folder.Exists()) {
            report.Line("There are none.");
            return;
        }
        FolderNames logs = NamesIn(folder, mostFileNames);
        if (!logs.complete)
            report.Line(MoreNamesLine(logs));
        std::erase_if(logs.names, [](const std::wstring& name) { return !zetscanprotocol::IsLogName(name); });
        // The names begin with the time.
        std::ranges::reverse(logs.names);
        std::size_t left = mostOfLogs, leftOfNames = mostOfFileNames;
        for (auto name = logs.names.begin(); name != logs.names.end(); ++name) {
            const std::string title = "-- " + UTF16to8(*name);
            if (title.size() > leftOfNames) {
                report.Line("[" + std::to_string(logs.names.end() - name) + " older logs are left out here]");
                break;
            }
            leftOfNames -= title.size();
            report.Line(title);
            Attempt(report, [&] {
                const std::string log = FileUtils::ReadFile(File(folder, *name), largestLog);
                report.BothEnds(log, std::min(left, mostOfLog));
                left -= std::min({left, log.size(), mostOfLog});
            });
        }
    });
}

/// Takes private words, control characters and what is no Unicode out.
std::string FitToRead(const std::string& text, const PrivateWords& privateWords)
{
    std::wstring clean = privateWords.Replace(zetcore::string::UTF8to16(text));
    std::erase(clean, L'\r');
    return UTF16to8(zetcore::string::ForTerminal(clean, true));
}

} // namespace

std::string MakeReport(const std::string& version, const Dir& preferences, const PrivateWords& privateWords)
{
    ReportText report;
    report.Line("Report of zetaudiopluginmanager, made at " + Now());
    report.Line(UTF16to8(PrivateWords::homePlaceholder) + " stands for the home folder, and " +
                UTF16to8(PrivateWords::namePlaceholder) + " for the account's name.");
    report.Line("Plug-ins wrote parts of the logs. Read them before you hand this file on.");
    report.Line("It has " + std::to_string(mostOfReport / kibibyte / kibibyte) +
                " MiB at most. A line in brackets says where something is left out.");
    AddVersions(report, version);
    AddSystem(report);
    AddPreferences(report, preferences);
    const File registryFile(preferences, PluginModuleInfoManager::GetSettingsFileName());
    AddFolders(report, registryFile);
    AddPlugins(report, preferences);
    AddLogs(report, preferences);
    ReportText bounded;
    bounded.Beginning(FitToRead(report.Text(), privateWords), mostOfContent);
    return bounded.Text();
}

} // namespace zetaudiopluginmanager
