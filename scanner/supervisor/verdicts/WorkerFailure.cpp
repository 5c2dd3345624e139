#include "supervisor/verdicts/WorkerFailure.h"

#include <zetaudiopluginhost/ModuleLoader.h>
#include <zetcore/string/OutputTail.h>

#include "supervisor/workers/ProcessEnd.h"

namespace zetaudiofilterscan {

using zetaudiopluginhost::ScanPhaseText;
using zetcore::string::TidyLine;

namespace {

constexpr std::size_t maxTextCharacters = 300;

std::string WhatHappened(const WorkerFailure& failure)
{
    const std::string code = std::to_string(failure.code);
    switch (failure.kind) {
    case WorkerFailure::Kind::Crashed:
        return "crashed (" + CrashText(failure.code) + ") " + ScanPhaseText(failure.phase);
    case WorkerFailure::Kind::Exited:
        return "ended the process (exit code " + code + ") " + ScanPhaseText(failure.phase);
    case WorkerFailure::Kind::TookTooLong:
        return "took longer than " + SecondsText(failure.limit) + " " + ScanPhaseText(failure.phase);
    case WorkerFailure::Kind::ChannelLost:
        return "closed files of the process that had loaded it";
    case WorkerFailure::Kind::WrongAnswer:
        return "damaged the process that had loaded it (" + TidyLine(failure.text, maxTextCharacters) + ")";
    case WorkerFailure::Kind::Misbehaved:
        break;
    }
    return failure.text.empty() ? std::string("misbehaved ") + ScanPhaseText(failure.phase)
                                : TidyLine(failure.text, maxTextCharacters);
}

} // namespace

std::string DescribeFailure(const WorkerFailure& failure, std::string_view lastLine)
{
    std::string text = WhatHappened(failure);
    const std::string line = TidyLine(lastLine, maxTextCharacters);
    if (!line.empty())
        text += "; its last output: " + line;
    return text;
}

std::string SecondsText(std::chrono::milliseconds time)
{
    const auto whole = time.count() / 1000;
    std::string text = std::to_string(whole);
    if (const auto rest = time.count() % 1000; rest != 0) {
        std::string digits = std::to_string(1000 + rest).substr(1);
        digits.erase(digits.find_last_not_of('0') + 1);
        text += "." + digits;
    }
    return text + (time.count() == 1000 ? " second" : " seconds");
}

} // namespace zetaudiofilterscan
