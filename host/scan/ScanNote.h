#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include <zetcore/filesupport/paths/File.h>

#include "scan/ScanWatch.h"

/// The note that the windows show when a scan is over, in the user's language.
namespace zetaudiopluginmanager {

/// The text of the note: UTF-8 in several lines, with long lists cut. It is empty when all went well, which
/// means that nothing has left the list, and that everything works, could be read and was reached.
std::string FormatScanNote(const ScanWatch::Result& result);

/// Tells how many plug-ins an interrupted scan did not reach.
void TellOfInterruptedScan(std::size_t count);

/// Tells that this file was damaged and has been put aside.
void TellOfDamagedFile(const zetcore::filesupport::File& file);

/// Shows the note of each scan, and scans those that it did not reach again when the user wants to. Main
/// thread.
class ScanNoteTeller
{
  public:
    /// Shows one note. It offers a further scan as long as each scan that it starts reaches more plug-ins, so
    /// that the questions come to an end.
    void Tell(const ScanWatch::Result& result);

  private:
    /// True when the user wants to scan those that were not reached.
    static bool Show(const ScanWatch::Result& result, bool offersScan);

    bool scansAgain = false;
    /// The result of the scan that this object has started.
    std::optional<ScanWatch::Result> latest;
};

} // namespace zetaudiopluginmanager
