#pragma once

#include <memory>
#include <string>

namespace zetaudiopluginhostui {

/// The standard error of one scanner. A thread passes on what it writes to where this process's standard
/// error led when the scanner was started, and its last line is remembered.
///
/// The thread goes on until nobody holds the pipe's other end any more or this object goes, so that a scanner
/// whose start has failed can write as long as it lives. It takes no signals: where standard error leads to a
/// pipe that nobody reads, only the text is lost. This object's destructor waits for nobody.
class ScannerOutput
{
  public:
    /// Throws `std::system_error` when the system has no pipe or no thread left.
    ScannerOutput();
    ~ScannerOutput();
    ScannerOutput(const ScannerOutput&) = delete;
    ScannerOutput& operator=(const ScannerOutput&) = delete;

    /// The descriptor that becomes the scanner's standard error; above the standard ones.
    int ScannerEnd() const noexcept;
    /// The scanner has its own by now: the end of the last copy is the end of the output.
    void CloseScannerEnd();
    /// Of all that has been written so far. Any thread.
    std::string LastLine();

  private:
    struct State;
    std::unique_ptr<State> state;
};

} // namespace zetaudiopluginhostui
