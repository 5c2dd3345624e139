#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Seconds that the call takes.
double Seconds(const std::function<void()>& call);

/// The median: the middle value, or the mean of the two middle ones; 0 when there are no values.
double Median(std::vector<double> values);

/// The result that a child process printed: its seconds, and how many plug-ins it found.
struct ChildResult
{
    double seconds = 0;
    int found = 0;
    /// The processors' time, of all threads.
    double processorSeconds = 0;
};

/// Runs this program as a child with these arguments and reads its result. Throws `std::runtime_error` when
/// it fails.
ChildResult RunChild(const std::string& program, const std::vector<std::string>& arguments);

/// Prints one row of the report: what was measured, the figure, and its limit.
void Report(const std::string& what, double value, const std::string& unit, double limit);
/// The same for a figure that must not be below its limit.
void ReportAtLeast(const std::string& what, double value, const std::string& unit, double limit);

} // namespace bench
