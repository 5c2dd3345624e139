#pragma once

#include <string>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zettesting/Environment.h>

namespace zetaudiopluginhostui {

/// Makes the named places fail, or late, as long as it lives (see FaultPoint.h).
class ScopedFaults
{
  public:
    explicit ScopedFaults(const std::string& setting) : variable("ZET_FAULT", setting)
    {
        zetcore::debug::ResetFaults();
    }
    ScopedFaults(const ScopedFaults&) = delete;
    ScopedFaults& operator=(const ScopedFaults&) = delete;

  private:
    /// After the variable is what it was.
    struct ReadAgain
    {
        ~ReadAgain() { zetcore::debug::ResetFaults(); }
    };

    ReadAgain readAgain;
    zettesting::ScopedEnvironment variable;
};

} // namespace zetaudiopluginhostui
