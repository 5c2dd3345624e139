#pragma once

#include <string>

namespace bench {

/// Prints figures with their limits, and remembers whether every limit was kept.
class FigureReport
{
  public:
    /// With `limitsHold` false, figures are printed without their limits, because the run is too small for
    /// them.
    explicit FigureReport(bool limitsHold) : holding(limitsHold) {}

    void Note(const std::string& what, double value, const std::string& unit);
    void AtMost(const std::string& what, double value, const std::string& unit, double limit);
    /// Reports a failure that counts whatever the size of the run.
    void Require(const std::string& what, bool kept);
    /// The text to print after a figure that must be above 1.
    const char* MoreThanOne(double ratio);
    bool AllKept() const { return kept; }

  private:
    bool holding;
    bool kept = true;
};

} // namespace bench
