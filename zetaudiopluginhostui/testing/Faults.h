#pragma once

#include <optional>
#include <string>
#include <utility>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zettesting/Environment.h>

namespace zetaudiopluginhostui {

/// Faults of `ZET_FAULT` while it lives.
class Faults
{
  public:
    explicit Faults(const std::string& text) : variable(std::in_place, "ZET_FAULT", text)
    {
        zetcore::debug::ResetFaults();
    }
    ~Faults()
    {
        variable.reset();
        zetcore::debug::ResetFaults();
    }
    Faults(const Faults&) = delete;
    Faults& operator=(const Faults&) = delete;

  private:
    std::optional<zettesting::ScopedEnvironment> variable;
};

} // namespace zetaudiopluginhostui
