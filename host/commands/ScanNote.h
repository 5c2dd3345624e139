#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "commands/ScanWatch.h"

/// The note that the windows show when a scan is over, in the user's language.
namespace zetaudiopluginmanager {

/// Empty when all went well: nothing has gone from the list, everything works, could be read and was reached.
/// UTF-8, several lines; long lists are cut.
std::string FormatScanNote(const ScanWatch::Result& result);

/// How many plug-ins a scan that has not ended in its time did not reach.
void TellOfInterruptedScan(std::size_t count);

/// Shows the note of each scan, and scans those that it did not reach again when the user wants to. Main
/// thread.
class ScanNoteTeller
{
  public:
    /// One note. While a scan that it has started itself gets on, it asks again; so it ends.
    void Tell(const ScanWatch::Result& result);

  private:
    /// True when the user wants to scan those that were not reached.
    static bool Show(const ScanWatch::Result& result, bool offersScan);

    bool scansAgain = false;
    /// Of the scan that this has started.
    std::optional<ScanWatch::Result> latest;
};

} // namespace zetaudiopluginmanager
