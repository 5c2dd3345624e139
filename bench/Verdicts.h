#pragma once

#include <string>

namespace bench {

/// Prints figures beside their limits and remembers whether every limit was kept.
class Verdicts
{
  public:
    /// `limitsHold` false: figures are printed without their limits, as a run that is too small for them.
    explicit Verdicts(bool limitsHold) : holding(limitsHold) {}

    void Note(const std::string& what, double value, const std::string& unit);
    void AtMost(const std::string& what, double value, const std::string& unit, double limit);
    /// For what must not be, whatever the size of the run.
    void Require(const std::string& what, bool kept);
    /// What stands behind a figure that must be above 1.
    const char* MoreThanOne(double ratio);
    bool AllKept() const { return kept; }

  private:
    bool holding;
    bool kept = true;
};

} // namespace bench
