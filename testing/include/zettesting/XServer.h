#pragma once

#include <memory>
#include <string>

namespace zettesting {

/// An X server of the test's own, without a screen, on a display number that is free. It ends with this
/// object, or with the process. POSIX systems only.
class XServer
{
  public:
    /// Returns when it takes connections. Throws `std::runtime_error` when it cannot be started.
    XServer();
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// For the environment's DISPLAY.
    const std::string& Display() const noexcept { return display; }

  private:
    struct Process;
    std::unique_ptr<Process> process;
    std::string display;
};

} // namespace zettesting
