// Measures scans. Without arguments, it measures everything but the following and prints medians of paired
// runs. With
// `--scaling`, it compares numbers of workers on plug-ins that wait; with `--beside ardour,qtractor`, it
// compares us with the scanners of these packages, where they are installed. With `--against FOLDER`, the
// programs of an older build in that folder scan the many plug-ins that crash, too. With `--once`, it does
// everything once and small, to show that it works. With the other arguments this program starts itself as a
// child.
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

#include "ScanBenches.h"
#include "TimedRuns.h"

namespace {

constexpr bench::ScanSize full{7, 3, 500, 1000, 10, 10000, 21, 200, 5000, 240, 8};
constexpr bench::ScanSize once{1, 1, 10, 20, 2, 500, 2, 10, 20, 8, 2};

void RunAll(const bench::ScanSetup& setup)
{
    bench::BenchRegistry(setup);
    bench::BenchLaunch(setup);
    bench::BenchTrivialPlugins(setup);
    bench::BenchCrash(setup);
    bench::BenchManyCrashes(setup);
    bench::BenchHanging(setup);
    bench::BenchRealPlugins(setup);
}

} // namespace

int main(int count, char** texts)
{
    std::vector<std::string> arguments(texts + 1, texts + count);
    try {
        const std::string mode = arguments.empty() ? "" : arguments[0];
        if (mode == "floor" && arguments.size() == 2)
            return bench::RunFloor(bench::FindModules(arguments[1]));
        if ((mode == "external" || mode == "in-process") && arguments.size() == 3)
            return bench::RunScan(bench::FindModules(arguments[1]), arguments[2], mode == "external");
        const bool isSmall = std::erase(arguments, "--once") > 0;
        bench::ScratchFolder scratch("scan_bench");
        bench::ScanSetup setup{texts[0], std::filesystem::weakly_canonical(texts[0]).parent_path(),
                               isSmall ? once : full, scratch};
        if (arguments.size() == 2 && mode == "--against") {
            setup.older = arguments[1];
            arguments.clear();
        }
        if (mode == "--beside" && arguments.size() == 2) {
            bench::BenchBesidePeers(setup, arguments[1]);
        } else if (mode == "--scaling" && arguments.size() == 1) {
            bench::BenchScaling(setup);
        } else if (arguments.empty()) {
            RunAll(setup);
            if (isSmall)
                bench::BenchScaling(setup);
        } else {
            std::fprintf(stderr,
                         "usage: %s [--scaling | --beside ardour,qtractor | --against FOLDER] [--once]\n",
                         texts[0]);
            return 2;
        }
        return 0;
    } catch (const std::invalid_argument& error) {
        std::fprintf(stderr, "%s: %s\n", texts[0], error.what());
        return 2;
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s: %s\n", texts[0], error.what());
        return 1;
    }
}
