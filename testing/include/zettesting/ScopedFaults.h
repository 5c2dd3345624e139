#pragma once

#include <string>

#include <zetcore/debug/faults/FaultPoint.h>
#include <zettesting/Environment.h>

namespace zettesting {

/// While this object lives, places of this process fail or are late as the setting says (see FaultPoint.h).
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
    /// Its destructor runs after the variable has its old value again.
    struct ReadAgain
    {
        ~ReadAgain() { zetcore::debug::ResetFaults(); }
    };

    ReadAgain readAgain;
    ScopedEnvironment variable;
};

} // namespace zettesting
