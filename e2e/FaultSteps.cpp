#include "FaultSteps.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <string_view>

namespace {

/// The steps, in the order of a scan. The registry is written once before the scan and once after it.
constexpr Step steps[] = {
    {"host.scan-begins", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.write", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.rename", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.done", 1, Phase::NoScanner},
    {"host.launching", 1, Phase::NoScanner},
    {"host.launched", 1, Phase::BeforeConnection},
    {"supervisor.started", 1, Phase::BeforeConnection},
    {"supervisor.listening", 1, Phase::BeforeConnection},
    {"supervisor.port-told", 1, Phase::BeforeConnection},
    {"host.port-read", 1, Phase::BeforeConnection},
    {"host.connected", 1},
    {"host.connect-sent", 1},
    {"supervisor.accepted", 1},
    {"supervisor.connected", 1},
    {"host.connect-answered", 1},
    {"supervisor.list", 1},
    {"host.list-answered", 1},
    {"worker.started", 1, Phase::BeforeConnection},
    {"worker.settings", 1},
    {"supervisor.answering", 3},
    {"supervisor.answered", 3},
    {"host.info-read", 1},
    {"host.progress-shown", 1, Phase::PerhapsConnected},
    {"worker.entity", 1},
    {"worker.entity", 2},
    {"worker.scanned", 1},
    {"worker.answered", 2},
    {"supervisor.entity", 2},
    {"supervisor.scanned", 2},
    {"write.AudioPlugins.xml.scan.write", 1},
    {"write.AudioPlugins.xml.scan.rename", 2},
    {"write.AudioPlugins.xml.scan.done", 2},
    {"host.entity-answered", 1},
    {"host.result-read", 2},
    {"write.AudioPlugins.xml.journal.write", 1, Phase::PerhapsConnected},
    {"write.AudioPlugins.xml.journal.done", 1, Phase::PerhapsConnected},
    {"append.AudioPlugins.xml.journal.write", 1, Phase::PerhapsConnected},
    {"append.AudioPlugins.xml.journal.done", 1, Phase::PerhapsConnected},
    {"host.result-merged", 2, Phase::PerhapsConnected},
    {"host.info-read", 2},
    {"supervisor.failed", 1},
    {"write.BannedAudioPlugins.xml.reasons.write", 1},
    {"write.BannedAudioPlugins.xml.reasons.rename", 1},
    {"supervisor.failure-told", 1, Phase::NoScanner},
    {"host.closed", 1, Phase::NoScanner},
    {"write.BannedAudioPlugins.xml.write", 1, Phase::NoScanner},
    {"write.BannedAudioPlugins.xml.rename", 1, Phase::NoScanner},
    {"write.BannedAudioPlugins.xml.done", 1, Phase::NoScanner},
    {"host.banned", 1, Phase::NoScanner},
    {"host.restarting", 1, Phase::NoScanner},
    {"host.finished", 1},
    {"host.stopping", 1},
    {"host.disconnected", 1, Phase::NoScanner},
    {"host.scanner-ended", 1, Phase::NoScanner},
    {"host.scan-done", 1, Phase::NoScanner},
    {"write.AudioPlugins.xml.write", 2, Phase::NoScanner},
    {"write.AudioPlugins.xml.rename", 2, Phase::NoScanner},
    {"write.AudioPlugins.xml.done", 2, Phase::NoScanner},
};

/// With several workers these are steps, too.
constexpr Step stepsAhead[] = {
    {"supervisor.trial-begun", 1},     {"supervisor.trial-begun", 4},   {"supervisor.passed", 1},
    {"supervisor.passed", 3},          {"supervisor.trial-failed", 1},  {"supervisor.trial-failed", 3},
    {"supervisor.worker-recycled", 1}, {"supervisor.culprits-left", 1}, {"supervisor.culprits-taken", 1},
    {"worker.makes-copies", 1},
};

} // namespace

std::vector<Step> StepsInTurn()
{
    return {std::begin(steps), std::end(steps)};
}

std::vector<Step> StepsAhead()
{
    std::vector<Step> all;
    for (Step step : steps) {
        // There are about as many workers as plug-ins, so that no worker need come to a place twice.
        if (IsWorkers(step) && step.visit > 1)
            continue;
        // Culprits are reported last, and the scanner ends with the last one.
        const std::string_view place = step.place;
        if (place == "host.finished" || place == "host.stopping")
            step.phase = Phase::NoScanner;
        all.push_back(step);
    }
    all.insert(all.end(), std::begin(stepsAhead), std::end(stepsAhead));
    return all;
}

bool IsWorkers(const Step& step)
{
    return std::string_view(step.place).starts_with("worker.");
}

bool IsBeforePort(const Step& step)
{
    const std::string_view place = step.place;
    return place == "host.launched" || place == "supervisor.started" || place == "supervisor.listening";
}

std::string NameOf(const Step& step, int workers, const std::string& victim)
{
    std::string name = std::string(step.place) + "." + std::to_string(step.visit) + "." + victim;
    if (workers > 1)
        name += "_" + std::to_string(workers) + "Workers";
    std::replace_if(
        name.begin(), name.end(), [](unsigned char character) { return !std::isalnum(character); }, '_');
    return name;
}
