#include <cstdio>
#include <map>
#include <vector>

#include "FileCache.h"
#include "Measure.h"
#include "PeakMemory.h"
#include "PeerScanners.h"
#include "ScanBenches.h"
#include "ScanCommand.h"
#include "TimedRuns.h"

namespace bench {

namespace fs = std::filesystem;

namespace {

const fs::path realPlugins = "/usr/lib/vst";

bool HaveRealPlugins()
{
    const bool are = fs::is_directory(realPlugins);
    if (!are)
        std::printf("no real plug-ins in %s; leaving that part out\n", realPlugins.string().c_str());
    return are;
}

struct Loop
{
    std::vector<double> seconds, processor;
};

/// Opens each plug-in in one process, asks its name, maker and category, closes it and unloads nothing.
double RunLoop(const ScanSetup& setup, Loop& loop)
{
    const ChildResult result = RunChild(setup.self, {"floor", realPlugins.string()});
    loop.seconds.push_back(result.seconds);
    loop.processor.push_back(result.processorSeconds);
    return result.seconds;
}

ScanTime ScanReal(const ScanSetup& setup, int jobs = 0)
{
    return RunScanCommand({setup.programs, realPlugins, setup.scratch.Prefs(), jobs, 0});
}

void BenchWarm(const ScanSetup& setup)
{
    Loop loop;
    std::vector<double> several, one, inProcess, severalRatio, oneRatio, inProcessRatio;
    int found = 0;
    // The first round fills the file cache. A run that only shows that it works does without.
    for (int run = setup.size.runs > 1 ? -1 : 0; run < setup.size.runs; ++run) {
        Loop first;
        const double seconds = RunLoop(setup, run < 0 ? first : loop);
        const ScanTime scan = ScanReal(setup);
        const ScanTime scanOne = ScanReal(setup, 1);
        const ChildResult own =
            RunChild(setup.self, {"in-process", realPlugins.string(), setup.scratch.Prefs()});
        if (run < 0)
            continue;
        found = scan.found;
        several.push_back(scan.seconds);
        one.push_back(scanOne.seconds);
        inProcess.push_back(own.seconds);
        severalRatio.push_back(scan.seconds / seconds);
        oneRatio.push_back(scanOne.seconds / seconds);
        inProcessRatio.push_back(own.seconds / seconds);
    }
    Report("real plug-ins, bare loop, " + std::to_string(found) + " plug-ins", Median(loop.seconds), "s", 0);
    Report("real plug-ins, bare loop, processor time", Median(loop.processor), "s", 0);
    Report("real plug-ins, scan", Median(several), "s", 0);
    Report("real plug-ins, scan / bare loop", Median(severalRatio), "", 0.45);
    Report("real plug-ins, scan --jobs 1", Median(one), "s", 0);
    Report("real plug-ins, scan --jobs 1 / bare loop", Median(oneRatio), "", 1.15);
    Report("real plug-ins, in-process scan without the program's start", Median(inProcess), "s", 0);
    Report("real plug-ins, in-process scan / bare loop", Median(inProcessRatio), "", 1.10);
}

void BenchCold(const ScanSetup& setup)
{
    Loop loop;
    std::vector<double> scans, ratio;
    for (int run = 0; run < setup.size.runs; ++run) {
        if (!DropFileCache()) {
            std::printf("the file cache cannot be dropped by this user; leaving cold scans out\n");
            return;
        }
        const double seconds = RunLoop(setup, loop);
        DropFileCache();
        scans.push_back(ScanReal(setup).seconds);
        ratio.push_back(scans.back() / seconds);
    }
    Report("real plug-ins, bare loop, cold file cache", Median(loop.seconds), "s", 0);
    Report("real plug-ins, scan, cold file cache", Median(scans), "s", 0);
    Report("real plug-ins, scan / bare loop, cold file cache", Median(ratio), "", 0.60);
}

void BenchMemory(const ScanSetup& setup)
{
    for (const int jobs : {0, 1}) {
        PeakMemory watch;
        ScanReal(setup, jobs);
        const ScanMemory memory = watch.Stop();
        const std::string what = std::string("real plug-ins, scan") + (jobs == 0 ? "" : " --jobs 1");
        Report(what + ", most worker processes at a time", memory.workers, "", 0);
        Report(what + ", most memory of supervisor and workers", memory.scanner, "MiB", 0);
        Report(what + ", most memory of the host", memory.host, "MiB", 0);
    }
}

} // namespace

void BenchRealPlugins(const ScanSetup& setup)
{
    if (!HaveRealPlugins())
        return;
    BenchWarm(setup);
    BenchCold(setup);
    BenchMemory(setup);
}

void BenchBesidePeers(const ScanSetup& setup, const std::string& names)
{
    const std::vector<PeerScanner> peers = FindPeerScanners(names);
    if (!HaveRealPlugins())
        return;
    const std::vector<std::string> modules = FindModules(realPlugins);
    struct Times
    {
        std::vector<double> seconds, ratio;
        int found = 0;
    };
    Times ours;
    std::vector<Times> theirs(peers.size());
    for (int run = setup.size.runs > 1 ? -1 : 0; run < setup.size.runs; ++run) {
        const ScanTime scan = ScanReal(setup);
        ours.found = scan.found;
        if (run >= 0)
            ours.seconds.push_back(scan.seconds);
        for (std::size_t index = 0; index < peers.size(); ++index) {
            const PeerTime time = RunPeer(peers[index], modules, setup.scratch.Prefs());
            theirs[index].found = time.found;
            if (run < 0)
                continue;
            theirs[index].seconds.push_back(time.seconds);
            theirs[index].ratio.push_back(scan.seconds / time.seconds);
        }
    }
    Report("scan, " + std::to_string(ours.found) + " plug-ins found", Median(ours.seconds), "s", 0);
    for (std::size_t index = 0; index < peers.size(); ++index) {
        const PeerScanner& peer = peers[index];
        const std::string what = peer.name + " " + peer.version + ", " + peer.how;
        Report(what + ", " + std::to_string(theirs[index].found) + " found", Median(theirs[index].seconds),
               "s", 0);
        Report("scan / " + what, Median(theirs[index].ratio), "", 0);
    }
}

} // namespace bench
