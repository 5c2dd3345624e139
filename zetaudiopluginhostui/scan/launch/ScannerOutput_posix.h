#pragma once

#include <memory>
#include <string>

namespace zetaudiopluginhostui {

/// Receives the standard error of one scanner. A thread passes the scanner's output on to the place where
/// this process's standard error led when the scanner was started. The last line is remembered.
///
/// The thread goes on until nobody holds the pipe's other end any more, or until this object is destroyed. So
/// a scanner whose start has failed can write as long as it lives. The thread takes no signals: when standard
/// error leads to a pipe that nobody reads, only the text is lost. The destructor does not wait for readers.
class ScannerOutput
{
  public:
    /// Throws `std::system_error` when the system has no pipe or no thread left.
    ScannerOutput();
    ~ScannerOutput();
    ScannerOutput(const ScannerOutput&) = delete;
    ScannerOutput& operator=(const ScannerOutput&) = delete;

    /// The descriptor that becomes the scanner's standard error. Its number is above the standard ones.
    int ScannerEnd() const noexcept;
    /// Call this when the scanner has its own copy. The output ends when the last copy is closed.
    void CloseScannerEnd();
    /// The last line of all output so far. Any thread.
    std::string LastLine();

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhostui
