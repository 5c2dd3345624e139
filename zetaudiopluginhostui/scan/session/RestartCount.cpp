#include "scan/session/RestartCount.h"

#include <algorithm>
#include <utility>

#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/ParseNumber.h>

namespace zetaudiopluginhostui {

namespace {

/// 0 stands for no limit.
int RestartLimit()
{
    const std::string entry = zetcore::debug::DebugDatabase::Instance().GetEntry(restartLimitKey, "");
    return std::max(zetcore::string::ParseNumber<int>(entry).value_or(0), 0);
}

} // namespace

void RestartCount::NoteRestart(std::size_t pending, ScannerProcess failed)
{
    if (pending < pendingBefore)
        fruitless = 0;
    pendingBefore = pending;
    ++fruitless;
    const int limit = RestartLimit();
    if (limit == 0 || fruitless <= limit)
        return;
    std::string text = "The scanner was restarted " + std::to_string(fruitless - 1) +
                       " times without getting on; plug-ins not scanned: " + std::to_string(pending);
    if (const auto end = FindScannerProcessEnd(failed)) {
        text += ". The last one " + end->status;
        if (!end->lastOutput.empty())
            text += "; its last output: " + end->lastOutput;
    }
    zetcore::debug::TraceLine(1, "ExternalAudioPluginScan", text);
    whyTooMany = std::move(text);
}

} // namespace zetaudiopluginhostui
