#pragma once

#include <memory>

namespace zetaudiofilterscan {

/// While it lives, the calling thread stays on the processor that it is on, and threads that it starts begin
/// there, too, and never leave it. So a plug-in's thread does not begin before the plug-in's caller waits.
/// Many plug-ins start a thread that looks for work, finds none and sleeps; a plug-in that is closed at once
/// waits until such a thread wakes up. One that is told to end before it has begun does not sleep at all.
/// It does nothing when the system does not allow it. Windows has no such thing: there a thread begins
/// wherever its process may run.
class OneProcessor
{
  public:
    OneProcessor();
    ~OneProcessor();
    OneProcessor(const OneProcessor&) = delete;
    OneProcessor& operator=(const OneProcessor&) = delete;

  private:
    struct Before;
    /// Null when nothing has happened.
    std::unique_ptr<Before> before;
};

} // namespace zetaudiofilterscan
