#pragma once

#include <chrono>
#include <memory>

namespace zetaudiofilterscan {

/// Wakes the scanning thread from another one. Stays set until it is reset, so that nothing is lost between
/// looking and waiting: reset, look, wait.
class Interrupt
{
  public:
    Interrupt();
    ~Interrupt();
    Interrupt(const Interrupt&) = delete;
    Interrupt& operator=(const Interrupt&) = delete;

    /// Any thread.
    void Set();
    /// The scanning thread.
    void Reset();
    /// Returns when it is set or at the deadline; true when it is set. The scanning thread.
    bool WaitUntil(std::chrono::steady_clock::time_point deadline);

    /// The system waits for this when it waits for several things: a descriptor, or a handle on Windows.
    struct System;
    const System& GetSystem() const noexcept { return *system; }

  private:
    std::unique_ptr<System> system;
};

} // namespace zetaudiofilterscan
