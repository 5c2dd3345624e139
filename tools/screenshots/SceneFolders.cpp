#include "screenshots/SceneFolders.h"

#include <array>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <utility>

#include <zetaudiofilterhost/PluginLocator.h>
#include <zetaudiopluginhostui/AudioPluginScan.h>
#include <zetcore/debug/faults/FaultPoint.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/Dir.h>
#include <zetcore/string/Utf.h>

#include "commands/CommandLine.h"
#include "screenshots/DriveThatIsAway.h"
#include "screenshots/PathText.h"
#include "session/WindowSettings.h"
#include "terminal/Console.h"

namespace screenshots {

namespace {

namespace fs = std::filesystem;

constexpr std::array badSamples{"crash_on_load", "crash_in_entry", "aborts", "overflows_stack"};
/// Names that users choose, because pictures show them.
constexpr char samplesFolder[] = "Plug-Ins", newsFolder[] = "New Plug-Ins", slowFolder[] = "Old Plug-Ins";
constexpr char slowSample[] = "loops_forever";
constexpr unsigned nameColumn = 2;
constexpr char debugDatabase[] = "ZET_DEBUG_DATABASE";

/// Throws `std::runtime_error` if the sample has not been built.
fs::path BuiltSample(const std::string& name)
{
    fs::path sample = fs::path(ZET_SAMPLE_PLUGINS) / name;
    if (!fs::exists(sample))
        throw std::runtime_error("the sample " + Utf8(sample) +
                                 " is missing; build the target zettestplugins first");
    return sample;
}

fs::path BuiltModule(const std::string& name)
{
    return BuiltSample(name + ZET_MODULE_SUFFIX);
}

/// Copies a sample to this folder under this name.
void CopySample(const std::string& sample, const fs::path& folder, const std::string& name)
{
    fs::create_directories(folder);
    fs::copy_file(BuiltModule(sample), folder / (name + ZET_MODULE_SUFFIX),
                  fs::copy_options::overwrite_existing);
}

void UsePreferences(const fs::path& folder)
{
    zetcore::filesupport::Dir::SetPrefDir(zetcore::string::UTF8to16(Utf8(folder)));
}

void Host(const fs::path& preferences, std::vector<std::string> arguments)
{
    arguments.insert(arguments.begin(), {"--prefs", Utf8(preferences)});
    if (const int status = zetaudiopluginmanager::RunCommandLine(arguments, std::cerr); status != 0)
        throw std::runtime_error("the host's command " + arguments[2] + " ended with " +
                                 std::to_string(status));
}

} // namespace

SceneFolders::SceneFolders(fs::path rootFolder) : root(std::move(rootFolder)) {}

void SceneFolders::Build(bool scanned) const
{
    const fs::path samples = root / samplesFolder, empty = root / "empty";
    fs::create_directories(samples);
    fs::copy(BuiltSample("good"), samples, fs::copy_options::recursive);
    for (const char* const bad : badSamples)
        CopySample("bad/" + std::string(bad), samples, bad);
    fs::create_directories(empty);
    Host(empty, {"folders", "add", Utf8(samples)});
    UsePreferences(empty);
    zetaudiopluginhostui::AudioPluginManagerSettings settings;
    settings.sortColumn = nameColumn;
    settings.sortAscending = true;
    zetaudiopluginmanager::SaveWindowSettings(settings);
    if (!scanned)
        return;
    const fs::path filled = root / "filled";
    fs::copy(empty, filled, fs::copy_options::recursive);
    Host(filled, {"scan"});
    // The time limit for all would also end plug-ins that are slow on a busy machine.
    CopySample("bad/" + std::string(slowSample), root / slowFolder, slowSample);
    Host(filled, {"folders", "add", Utf8(root / slowFolder)});
    zetaudiopluginmanager::SetEnvironmentText(debugDatabase, "zetaudiofilterscan.EntityTimeoutSeconds=2");
    Host(filled, {"scan"});
    zetaudiopluginmanager::SetEnvironmentText(debugDatabase, "");
}

fs::path SceneFolders::CopyOfPreferences(bool filled) const
{
    fs::path copy = root / "used";
    fs::remove_all(copy);
    fs::copy(root / (filled ? "filled" : "empty"), copy, fs::copy_options::recursive);
    return copy;
}

fs::path SceneFolders::UnusablePreferences() const
{
    const fs::path file = root / "file";
    if (!std::ofstream(file))
        throw std::runtime_error("cannot write " + Utf8(file));
    return file / "preferences";
}

void SceneFolders::LeaveMarkerOfCrash(const fs::path& preferences) const
{
    UsePreferences(preferences);
    const fs::path plugin = root / samplesFolder / (std::string("vst2_synth") + ZET_MODULE_SUFFIX);
    const zetaudiofilterhost::PluginLocator locator(zetaudiofilterhost::TechnologyType::VST,
                                                    zetcore::string::UTF8to16(Utf8(plugin)));
    const std::string marker =
        zetaudiopluginhostui::AudioPluginScan::GetLastScannedPluginPath().FullPathUTF8();
    std::ofstream stream(fs::path(std::u8string(marker.begin(), marker.end())));
    stream << zetcore::string::UTF16to8(locator.ToString());
    if (!stream.flush())
        throw std::runtime_error("cannot write " + marker);
}

void SceneFolders::AddNewPlugins(const fs::path& preferences) const
{
    const fs::path news = root / newsFolder;
    fs::remove_all(news);
    CopySample("good/vst2_synth", news, "Slow River");
    CopySample("bad/crash_in_entry", news, "Bright Hall Reverb");
    Host(preferences, {"folders", "add", Utf8(news)});
}

void SceneFolders::AddManyChanges(const fs::path& preferences) const
{
    AddNewPlugins(preferences);
    const fs::path news = root / newsFolder;
    const std::string edition = " Mastering Suite 2031 Professional Edition (64-bit)";
    constexpr std::array old{"Amber", "Birch", "Cedar", "Delta", "Ember", "Fjord", "Grove", "Heath", "Inlet"};
    for (const std::string name : old)
        CopySample("good/vst2_effect", news, name + edition);
    Host(preferences, {"scan"});
    fs::remove_all(news);
    for (const std::string name : old)
        CopySample("bad/missing_library", news, "New " + name + edition);
    for (const std::string name : {"Bright Hall Reverb", "Coral Delay", "Dune Phaser"})
        CopySample("bad/crash_in_entry", news, name);
    CopySample("good/vst2_synth", news, "Slow River");
    std::string faults;
    for (const std::string name : {"Private Collection", "Shared Drive of the Second Studio"}) {
        fs::create_directories(news / name);
        faults += (faults.empty() ? "" : ";") + ("read." + name + ":1:denied");
    }
    zetaudiopluginmanager::SetEnvironmentText("ZET_FAULT", faults);
    zetcore::debug::ResetFaults();
}

void SceneFolders::AddOfflineFolder(const fs::path& preferences) const
{
    Host(preferences, {"folders", "add", "--offline", folderOnDriveThatIsAway});
}

void SceneFolders::AddHang(const fs::path& preferences) const
{
    const fs::path news = root / newsFolder;
    fs::remove_all(news);
    CopySample("good/vst2_synth", news, "Slow River");
    CopySample("good/vst2_effect", news, "Amber Delay");
    CopySample("bad/loops_forever", news, nameOfHang);
    Host(preferences, {"folders", "add", Utf8(news)});
    Host(preferences, {"folders", "remove", Utf8(root / samplesFolder)});
}

fs::path SceneFolders::MoreFolder() const
{
    fs::path folder = root / "More Plug-Ins";
    fs::create_directories(folder);
    return folder;
}

void SceneFolders::TakeScannerAway() const
{
    zetcore::filesupport::commondirs::SetExecutableDir(zetcore::string::UTF8to16(Utf8(root / "empty")));
}

} // namespace screenshots
