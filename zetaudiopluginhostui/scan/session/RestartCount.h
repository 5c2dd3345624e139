#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "scan/launch/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// Counts the restarts in a row after which the scanner of one scan reported no new plug-in. One thread.
class RestartCount
{
  public:
    explicit RestartCount(std::size_t pendingAtStart) : pendingBefore(pendingAtStart) {}

    /// Called before each restart, with the number of plug-ins that no scanner has reported yet, and with the
    /// scanner that failed. When more restarts in a row than the host allows (ScanLimits.h) have left that
    /// number as it was, there were too many, and the reason is traced.
    void NoteRestart(std::size_t pending, ScannerProcess failed);
    /// Why the scan gives up, when there were too many: a sentence for people (UTF-8), with the end of the
    /// last scanner as far as it was known.
    const std::optional<std::string>& WhyTooMany() const noexcept { return whyTooMany; }

  private:
    std::size_t pendingBefore;
    int fruitless = 0;
    std::optional<std::string> whyTooMany;
};

} // namespace zetaudiopluginhostui
