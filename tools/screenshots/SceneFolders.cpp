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
#include "session/WindowSettings.h"
#include "terminal/Console.h"

namespace screenshots {

namespace {

namespace fs = std::filesystem;

constexpr std::array badSamples{"crash_on_load", "crash_in_entry", "aborts", "overflows_stack",
                                "loops_forever"};
constexpr unsigned nameColumn = 2;

std::string Utf8(const fs::path& path)
{
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

fs::path Sample(const std::string& name)
{
    return fs::path(ZET_SAMPLE_PLUGINS) / (name + ZET_MODULE_SUFFIX);
}

/// Copies a sample to this folder under this name.
void CopySample(const std::string& sample, const fs::path& folder, const std::string& name)
{
    fs::create_directories(folder);
    fs::copy_file(Sample(sample), folder / (name + ZET_MODULE_SUFFIX), fs::copy_options::overwrite_existing);
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
    const fs::path built(ZET_SAMPLE_PLUGINS), samples = root / "samples", empty = root / "empty";
    fs::create_directories(samples);
    if (fs::exists(built / "good"))
        fs::copy(built / "good", samples, fs::copy_options::recursive);
    for (const char* const bad : badSamples) {
        const fs::path file = Sample("bad/" + std::string(bad));
        if (fs::exists(file))
            fs::copy_file(file, samples / file.filename());
    }
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
    const fs::path plugin = root / "samples" / (std::string("vst2_synth") + ZET_MODULE_SUFFIX);
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
    const fs::path news = root / "news";
    fs::remove_all(news);
    CopySample("good/vst2_synth", news, "Slow River");
    CopySample("bad/crash_in_entry", news, "Bright Hall Reverb");
    Host(preferences, {"folders", "add", Utf8(news)});
}

void SceneFolders::AddManyChanges(const fs::path& preferences) const
{
    AddNewPlugins(preferences);
    const fs::path news = root / "news";
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

void SceneFolders::TakeScannerAway() const
{
    zetcore::filesupport::commondirs::SetExecutableDir(zetcore::string::UTF8to16(Utf8(root / "empty")));
}

} // namespace screenshots
