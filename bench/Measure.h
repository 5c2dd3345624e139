#pragma once

#include <functional>
#include <string>
#include <vector>

namespace bench {

/// Seconds that the call takes.
double Seconds(const std::function<void()>& call);

/// The middle value (the mean of the two middle ones); 0 for none.
double Median(std::vector<double> values);

/// What one run in a process of its own printed: its seconds, and how many plug-ins it found.
struct ChildResult
{
    double seconds = 0;
    int found = 0;
};

/// Runs this program again with these arguments and reads its result. Throws `std::runtime_error` when it
/// fails.
ChildResult RunChild(const std::string& program, const std::vector<std::string>& arguments);

/// One row of the report: what, how much, and the limit that it is held against.
void Report(const std::string& what, double value, const std::string& unit, double limit);

} // namespace bench
