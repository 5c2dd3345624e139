#include <map>
#include <stdexcept>
#include <vector>

#include "Measure.h"
#include "PluginCopies.h"
#include "ScanBenches.h"
#include "ScanCommand.h"

namespace bench {

namespace fs = std::filesystem;

namespace {

/// Scans the folder and checks how many plug-ins were found and banned.
double SecondsOf(const ScanCommand& command, int found, int banned)
{
    const ScanTime time = RunScanCommand(command);
    if (time.found != found || time.scanned != found + banned)
        throw std::runtime_error("of " + std::to_string(found + banned) + " plug-ins, " +
                                 std::to_string(time.scanned) + " were scanned and " +
                                 std::to_string(time.found) + " found");
    return time.seconds;
}

double SecondsToScan(const ScanSetup& setup, const fs::path& modules, int found, int banned, int jobs = 0,
                     int timeout = 0)
{
    return SecondsOf({setup.programs, modules, setup.scratch.Prefs(), jobs, timeout}, found, banned);
}

} // namespace

void BenchTrivialPlugins(const ScanSetup& setup)
{
    const int copies = setup.size.copies, linear = setup.size.linear;
    const fs::path folder = MakeCopies(setup.scratch.Path() / "trivial", "good/vst2_effect", copies);
    std::vector<double> overhead;
    for (int run = 0; run < setup.size.runs; ++run) {
        const double loop = RunChild(setup.self, {"floor", folder.string()}).seconds;
        overhead.push_back((SecondsToScan(setup, folder, copies, 0) - loop) / copies * 1000);
    }
    Report(std::to_string(copies) + " trivial plug-ins, above the bare loop, each", Median(overhead), "ms",
           0.3);

    const fs::path half = MakeCopies(setup.scratch.Path() / "linear1", "good/vst2_effect", linear);
    const fs::path whole = MakeCopies(setup.scratch.Path() / "linear2", "good/vst2_effect", 2 * linear);
    std::vector<double> growth, perPlugin;
    for (int run = 0; run < setup.size.runs; ++run) {
        const auto inProcess = [&](const fs::path& modules) {
            return RunChild(setup.self, {"in-process", modules.string(), setup.scratch.Prefs()}).seconds;
        };
        const double first = inProcess(half);
        const double second = inProcess(whole);
        growth.push_back(second / first);
        perPlugin.push_back(second / (2 * linear) * 1000);
    }
    Report(std::to_string(2 * linear) + " trivial plug-ins in-process, each", Median(perPlugin), "ms", 0);
    Report("time for " + std::to_string(2 * linear) + " / time for " + std::to_string(linear) +
               ", in-process",
           Median(growth), "", 2.3);
}

void BenchCrash(const ScanSetup& setup)
{
    const int crashes = setup.size.crashes;
    const fs::path good = MakeCopies(setup.scratch.Path() / "good", "good/vst2_effect", 2 * crashes);
    // Each bad plug-in is between two good ones, so that every crash happens in a scanner that has loaded
    // others.
    const fs::path mixed = MakeCopies(setup.scratch.Path() / "mixed", "good/vst2_effect", 2 * crashes);
    MakeCopies(mixed, "bad/crash_in_entry", crashes, "", 2 * crashes);
    std::vector<double> cost;
    for (int run = 0; run < setup.size.runs; ++run) {
        const double without =
            RunChild(setup.self, {"external", good.string(), setup.scratch.Prefs()}).seconds;
        const double with = RunChild(setup.self, {"external", mixed.string(), setup.scratch.Prefs()}).seconds;
        cost.push_back((with - without) / crashes * 1000);
    }
    Report("a crash, until the next plug-in is being scanned", Median(cost), "ms", 60);
}

void BenchManyCrashes(const ScanSetup& setup)
{
    const int all = setup.size.manyModules, bad = all / 10;
    const fs::path folder = MakeCopies(setup.scratch.Path() / "many", "good/vst2_effect", all - bad);
    MakeCopies(folder, "bad/crash_in_entry", bad, "", all - bad);
    const bool hasOlder = !setup.older.empty();
    std::vector<double> one, several, ratio, older, olderRatio;
    for (int run = 0; run < setup.size.longRuns; ++run) {
        several.push_back(SecondsToScan(setup, folder, all - bad, bad));
        one.push_back(SecondsToScan(setup, folder, all - bad, bad, 1));
        ratio.push_back(several.back() / one.back());
        if (hasOlder) {
            older.push_back(SecondsOf({setup.older, folder, setup.scratch.Prefs()}, all - bad, bad));
            olderRatio.push_back(several.back() / older.back());
        }
    }
    const std::string what = std::to_string(all) + " plug-ins, of which " + std::to_string(bad) + " crash, ";
    Report(what + "--jobs 1", Median(one), "s", 0);
    Report(what + "default", Median(several), "s", 0);
    Report(what + "default / --jobs 1", Median(ratio), "", hasOlder ? 0 : 0.7);
    if (hasOlder) {
        Report(what + "older build", Median(older), "s", 0);
        Report(what + "default / older build", Median(olderRatio), "", 0.7);
    }
}

void BenchHanging(const ScanSetup& setup)
{
    constexpr int hanging = 4, limit = 3;
    const int good = setup.size.amongHanging;
    const fs::path root = setup.scratch.Path();
    const fs::path without = MakeCopies(root / "no hanging", "good/vst2_effect", good);
    // The prefix puts them to the beginning or the end of the list.
    const std::map<std::string, std::string> places{{"first", "0"}, {"spread", ""}, {"last", "9"}};
    for (const auto& place : places) {
        const fs::path folder = MakeCopies(root / ("hanging " + place.first), "good/vst2_effect", good);
        MakeCopies(folder, "bad/hangs_on_load", hanging, place.second, good);
        std::vector<double> cost;
        for (int run = 0; run < setup.size.longRuns; ++run) {
            const double plain = SecondsToScan(setup, without, good, 0);
            const double with = SecondsToScan(setup, folder, good, hanging, 0, limit);
            cost.push_back((with - plain) / limit);
        }
        Report(std::to_string(good) + " plug-ins and " + std::to_string(hanging) + " that hang, " +
                   place.first + ": time above theirs / limit",
               Median(cost), "", 1.3);
    }
}

void BenchScaling(const ScanSetup& setup)
{
    const int waiting = setup.size.waiting;
    const fs::path folder = MakeCopies(setup.scratch.Path() / "waiting", "bad/waits", waiting);
    std::map<int, std::vector<double>> seconds;
    for (int run = 0; run < setup.size.longRuns; ++run)
        for (int workers = 1; workers <= setup.size.mostWorkers; workers *= 2)
            seconds[workers].push_back(SecondsToScan(setup, folder, waiting, 0, workers));
    for (const auto& each : seconds) {
        const int workers = each.first;
        const std::string what =
            std::to_string(waiting) + " plug-ins that wait for 50 ms, --jobs " + std::to_string(workers);
        Report(what, Median(each.second), "s", 0);
        std::vector<double> share;
        for (std::size_t run = 0; run < each.second.size(); ++run)
            share.push_back(seconds[1][run] / each.second[run] / workers);
        if (workers > 1)
            ReportAtLeast(what + ": times as fast, / " + std::to_string(workers), Median(share), "", 0.85);
    }
}

} // namespace bench
