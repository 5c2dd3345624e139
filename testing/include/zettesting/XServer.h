#pragma once

#include <memory>
#include <string>

namespace zettesting {

/// An X server for one test, without a screen, on a free display number. It ends with this object or with the
/// process. POSIX systems only.
class XServer
{
  public:
    /// Returns when the server takes connections. Throws `std::runtime_error` when it cannot be started.
    XServer();
    ~XServer();
    XServer(const XServer&) = delete;
    XServer& operator=(const XServer&) = delete;

    /// The value for the environment variable DISPLAY.
    const std::string& Display() const noexcept { return display; }

  private:
    struct Process;
    std::unique_ptr<Process> process;
    std::string display;
};

} // namespace zettesting
