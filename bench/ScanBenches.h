#pragma once

#include <filesystem>
#include <string>

#include "ScratchFolder.h"

namespace bench {

/// How much each benchmark of scans does.
struct ScanSize
{
    int runs;
    /// Runs of what takes many seconds.
    int longRuns;
    int copies;
    int linear;
    int crashes;
    int records;
    int launches;
    int amongHanging;
    int manyModules;
    int waiting;
    int mostWorkers;
};

struct ScanSetup
{
    /// This program, and its folder with the scanner and the host program.
    std::string self;
    std::filesystem::path programs;
    ScanSize size;
    ScratchFolder& scratch;
    /// The folder of an older build's programs, to compare with. Empty without one.
    std::filesystem::path older = {};
};

/// Each measures one kind of thing and prints its figures.

void BenchRegistry(const ScanSetup& setup);
void BenchLaunch(const ScanSetup& setup);
void BenchTrivialPlugins(const ScanSetup& setup);
void BenchCrash(const ScanSetup& setup);
void BenchManyCrashes(const ScanSetup& setup);
void BenchHanging(const ScanSetup& setup);
void BenchScaling(const ScanSetup& setup);
void BenchRealPlugins(const ScanSetup& setup);
/// `names` are the peers' packages, separated by commas.
void BenchBesidePeers(const ScanSetup& setup, const std::string& names);

} // namespace bench
