// Measures scans. Without arguments, it measures everything and prints medians of paired runs. With `--once`,
// it does everything once and small, to show that it works. With the other arguments this program starts
// itself as a child.
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <memory>

#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetcore/string/Utf.h>

#include "Measure.h"
#include "ScannerLaunch.h"
#include "ScratchFolder.h"
#include "TimedRuns.h"

namespace {

namespace fs = std::filesystem;
using bench::Median;
using bench::Report;
using bench::ScratchFolder;

struct Size
{
    int runs;
    int copies;
    int linear;
    int crashes;
    int records;
    int launches;
};
constexpr Size full{7, 500, 1000, 10, 10000, 21};
constexpr Size once{1, 10, 20, 2, 500, 2};

/// Makes a folder with so many copies of a sample plug-in. They are real files, because links to one file
/// would be loaded once.
fs::path MakeCopies(const fs::path& folder, const std::string& plugin, int copies)
{
    fs::create_directories(folder);
    for (int index = 0; index < copies; ++index) {
        const fs::path original = fs::path(ZET_BENCH_PLUGINS) / plugin;
        fs::copy_file(original, folder / (original.stem().string() + std::to_string(index) +
                                          original.extension().string()));
    }
    return folder;
}

struct Pairs
{
    std::vector<double> floor, scan, ratio;
    int found = 0;
};

/// Runs the bare loader and a scan on the same folder, in turns.
Pairs RunPairs(const std::string& self, const fs::path& folder, const char* how, int runs,
               ScratchFolder& scratch)
{
    Pairs pairs;
    // The first pair of runs fills the file cache. A run that only shows that it works does without.
    for (int run = runs > 1 ? -1 : 0; run < runs; ++run) {
        const auto floor = bench::RunChild(self, {"floor", folder.string()});
        const auto scan = bench::RunChild(self, {how, folder.string(), scratch.Prefs()});
        if (run < 0)
            continue;
        pairs.floor.push_back(floor.seconds);
        pairs.scan.push_back(scan.seconds);
        pairs.ratio.push_back(scan.seconds / floor.seconds);
        pairs.found = scan.found;
    }
    return pairs;
}

void BenchRealPlugins(const std::string& self, const Size& size, ScratchFolder& scratch)
{
    const fs::path folder = "/usr/lib/vst";
    if (!fs::is_directory(folder)) {
        std::printf("no real plug-ins in %s; leaving that part out\n", folder.string().c_str());
        return;
    }
    for (const auto& [how, limit] : {std::pair{"external", 1.15}, std::pair{"in-process", 1.10}}) {
        const Pairs pairs = RunPairs(self, folder, how, size.runs, scratch);
        Report("real plug-ins, bare loop, " + std::to_string(pairs.found) + " modules", Median(pairs.floor),
               "s", 0);
        Report(std::string("real plug-ins, ") + how + " scan", Median(pairs.scan), "s", 0);
        Report(std::string("real plug-ins, ") + how + " scan / bare loop", Median(pairs.ratio), "", limit);
    }
}

void BenchTrivialPlugins(const std::string& self, const Size& size, ScratchFolder& scratch)
{
    const fs::path folder = MakeCopies(scratch.Path() / "trivial", "good/vst2_effect.so", size.copies);
    const Pairs pairs = RunPairs(self, folder, "external", size.runs, scratch);
    std::vector<double> overhead;
    for (std::size_t run = 0; run < pairs.scan.size(); ++run)
        overhead.push_back((pairs.scan[run] - pairs.floor[run]) / size.copies * 1000);
    Report(std::to_string(size.copies) + " trivial plug-ins, external, above the bare loop, each",
           Median(overhead), "ms", 0.5);

    const fs::path half = MakeCopies(scratch.Path() / "linear1", "good/vst2_effect.so", size.linear);
    const fs::path whole = MakeCopies(scratch.Path() / "linear2", "good/vst2_effect.so", 2 * size.linear);
    std::vector<double> growth, perPlugin;
    for (int run = 0; run < size.runs; ++run) {
        const double first = bench::RunChild(self, {"in-process", half.string(), scratch.Prefs()}).seconds;
        const double second = bench::RunChild(self, {"in-process", whole.string(), scratch.Prefs()}).seconds;
        growth.push_back(second / first);
        perPlugin.push_back(second / (2 * size.linear) * 1000);
    }
    Report(std::to_string(2 * size.linear) + " trivial plug-ins in-process, each", Median(perPlugin), "ms",
           0);
    Report("time for " + std::to_string(2 * size.linear) + " / time for " + std::to_string(size.linear) +
               ", in-process",
           Median(growth), "", 2.3);
}

void BenchCrashes(const std::string& self, const Size& size, ScratchFolder& scratch)
{
    const fs::path good = MakeCopies(scratch.Path() / "good", "good/vst2_effect.so", 2 * size.crashes);
    const fs::path mixed = MakeCopies(scratch.Path() / "mixed", "good/vst2_effect.so", 2 * size.crashes);
    MakeCopies(mixed, "bad/crash_in_entry.so", size.crashes);
    // Each bad plug-in is between two good ones, so that every crash happens in a scanner that has loaded
    // others.
    for (int index = 0; index < size.crashes; ++index)
        fs::rename(mixed / ("crash_in_entry" + std::to_string(index) + ".so"),
                   mixed / ("vst2_effect" + std::to_string(2 * index) + "_crash.so"));
    std::vector<double> cost;
    for (int run = 0; run < size.runs; ++run) {
        const double without = bench::RunChild(self, {"external", good.string(), scratch.Prefs()}).seconds;
        const double with = bench::RunChild(self, {"external", mixed.string(), scratch.Prefs()}).seconds;
        cost.push_back((with - without) / size.crashes * 1000);
    }
    Report("a crash, until the next plug-in is being scanned", Median(cost), "ms", 60);
}

void BenchLaunch(const Size& size, const fs::path& programFolder, ScratchFolder& scratch)
{
    std::vector<double> seconds;
    for (int run = 0; run < size.launches; ++run)
        seconds.push_back(bench::SecondsToConnect(programFolder / "zetaudiofilterscan", scratch.Prefs()) *
                          1000);
    Report("launch of the scanner until \"Connect\" is answered", Median(seconds), "ms", 30);
}

void BenchRegistry(const Size& size, ScratchFolder& scratch)
{
    using namespace zetaudiofilterhost;
    PluginModuleInfoManager registry;
    for (int index = 0; index < size.records; ++index) {
        const std::wstring number = std::to_wstring(index);
        auto info = std::make_shared<PluginModuleInfo>(PluginLocator(
            TechnologyType::VST, L"/usr/lib/vst/maker-" + number + L"/plug-in " + number + L".so"));
        info->SetName(L"Plug-in number " + number);
        info->SetVendor(L"A maker of plug-ins");
        info->SetVersionString(L"1.2." + number);
        info->SetCategory(L"Effect");
        info->SetUniqueId(number);
        info->SetHasAnyNonSynthEffect(true);
        info->SetFileStamp(100000 + static_cast<unsigned>(index), 1700000000000000000 + index);
        registry.AddModule(info);
    }
    const zetcore::filesupport::File file(
        zetcore::filesupport::Dir(zetcore::string::UTF8to16(scratch.Prefs())), L"registry.xml");
    std::vector<double> save, load;
    for (int run = 0; run < size.runs; ++run) {
        save.push_back(bench::Seconds([&] { registry.SaveConfiguration(file, true); }) * 1000);
        PluginModuleInfoManager other;
        load.push_back(bench::Seconds([&] { other.LoadConfiguration(file); }) * 1000);
        if (other.RecordCount() != static_cast<std::size_t>(size.records))
            throw std::runtime_error("the registry did not come back whole");
    }
    Report("registry with " + std::to_string(size.records) + " records, save", Median(save), "ms", 40);
    Report("registry with " + std::to_string(size.records) + " records, load", Median(load), "ms", 40);
}

int RunAll(const std::string& self, const Size& size)
{
    ScratchFolder scratch("scan_bench");
    const fs::path programFolder = fs::weakly_canonical(self).parent_path();
    BenchRegistry(size, scratch);
    BenchLaunch(size, programFolder, scratch);
    BenchTrivialPlugins(self, size, scratch);
    BenchCrashes(self, size, scratch);
    BenchRealPlugins(self, size, scratch);
    return 0;
}

} // namespace

int main(int count, char** arguments)
{
    try {
        const std::string mode = count > 1 ? arguments[1] : "";
        if (mode == "floor" && count == 3)
            return bench::RunFloor(bench::FindModules(arguments[2]));
        if ((mode == "external" || mode == "in-process") && count == 4)
            return bench::RunScan(bench::FindModules(arguments[2]), arguments[3], mode == "external");
        if (count == 1 || (count == 2 && mode == "--once"))
            return RunAll(arguments[0], count == 1 ? full : once);
        std::fprintf(stderr, "usage: %s [--once]\n", arguments[0]);
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", arguments[0], error.what());
        return 1;
    }
}
