#include "scan/RestartCount.h"

#include <algorithm>
#include <string>

#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/ParseNumber.h>

namespace zetaudiopluginhostui {

namespace {

/// 0: no limit.
int MostFruitlessRestarts()
{
    const std::string entry = zetcore::debug::DebugDatabase::Instance().GetEntry(mostFruitlessRestarts, "");
    return std::max(zetcore::string::ParseNumber<int>(entry).value_or(0), 0);
}

} // namespace

void RestartCount::Note(std::size_t pending, ScannerProcess failed)
{
    if (pending < pendingBefore)
        fruitless = 0;
    pendingBefore = pending;
    ++fruitless;
    const int most = MostFruitlessRestarts();
    tooMany = most > 0 && fruitless > most;
    if (!tooMany)
        return;
    lastEnd = FindScannerProcessEnd(failed);
    zetcore::debug::TraceLine(1, "ExternalAudioPluginScan", Describe());
}

std::string RestartCount::Describe() const
{
    if (!tooMany)
        return {};
    std::string text = "The scanner was restarted " + std::to_string(fruitless - 1) +
                       " times without getting on; plug-ins not scanned: " + std::to_string(pendingBefore);
    if (lastEnd)
        text += ". The last one " + lastEnd->status;
    if (lastEnd && !lastEnd->lastOutput.empty())
        text += "; its last output: " + lastEnd->lastOutput;
    return text;
}

} // namespace zetaudiopluginhostui
