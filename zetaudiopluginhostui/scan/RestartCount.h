#pragma once

#include <cstddef>
#include <optional>
#include <string>

#include "scan/ScannerProcess.h"

namespace zetaudiopluginhostui {

/// Counts the restarts of one scan's scanner that got on with nothing. One thread.
class RestartCount
{
  public:
    explicit RestartCount(std::size_t pendingAtStart) : pendingBefore(pendingAtStart) {}

    /// Before each restart, with the number of plug-ins that no scanner has reported yet and the scanner that
    /// failed. When more restarts in a row than the host allows (ScanLimits.h) have left that number as it
    /// was, this is traced.
    void Note(std::size_t pending, ScannerProcess failed);
    bool TooMany() const noexcept { return tooMany; }
    /// Says so (UTF-8) when there were too many, with the end of the last scanner as far as it was known;
    /// otherwise empty.
    std::string Describe() const;

  private:
    std::size_t pendingBefore;
    int fruitless = 0;
    bool tooMany = false;
    std::optional<ScannerProcessEnd> lastEnd;
};

} // namespace zetaudiopluginhostui
