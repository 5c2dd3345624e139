#pragma once

#include <atomic>
#include <thread>

namespace bench {

/// The most that the processes of a scan had in memory at one moment, in MiB. Pages that several of them
/// share count in parts, where the system tells.
struct ScanMemory
{
    double host = 0;
    /// The supervisor and its workers together.
    double scanner = 0;
    int workers = 0;
};

/// Looks at the children of this process, and at theirs, until `Stop`.
class PeakMemory
{
  public:
    PeakMemory();
    ~PeakMemory();
    PeakMemory(const PeakMemory&) = delete;
    PeakMemory& operator=(const PeakMemory&) = delete;

    ScanMemory Stop();

  private:
    void Watch();

    ScanMemory most;
    std::atomic<bool> goOn{true};
    std::thread thread;
};

/// The memory that they have now; all 0 when the system does not tell.
ScanMemory MemoryOfChildren();

} // namespace bench
