#include "scan/session/RestartCount.h"

#include <algorithm>
#include <utility>

#include <zetaudiopluginhost/ReasonSentences.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>
#include <zetcore/string/ParseNumber.h>

namespace zetaudiopluginhostui {

namespace reasons = zetaudiopluginhost::reasons;

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
    std::string text = reasons::InEnglish(reasons::tooManyRestarts,
                                          {std::to_string(fruitless - 1), std::to_string(pending)});
    if (const auto end = FindScannerProcessEnd(failed))
        text = end->Tell({reasons::lastExited, reasons::lastWasEnded, reasons::lastEnded}, text);
    zetcore::debug::TraceLine(1, "ExternalAudioPluginScan", text);
    whyTooMany = std::move(text);
}

} // namespace zetaudiopluginhostui
