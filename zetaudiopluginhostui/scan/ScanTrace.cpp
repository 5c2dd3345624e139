#include "scan/ScanTrace.h"

#include <zetcore/debug/Trace.h>

namespace zetaudiopluginhostui {

namespace {

constexpr char category[] = "ExternalAudioPluginScan";
constexpr int level = 6;

} // namespace

bool ScanTraceSite::IsEnabled()
{
    const int changeCount = zetcore::debug::TraceChangeCount();
    if (seenChangeCount.exchange(changeCount) != changeCount)
        enabled = ask(category, level, true);
    return enabled;
}

void ScanTraceSite::WriteLine(const std::string& line)
{
    zetcore::debug::Trace(level, category, line);
}

} // namespace zetaudiopluginhostui
