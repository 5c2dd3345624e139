#include "Measure.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <sstream>
#include <stdexcept>

#include "CommandOutput.h"

namespace bench {

double Seconds(const std::function<void()>& call)
{
    const auto start = std::chrono::steady_clock::now();
    call();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double Median(std::vector<double> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    const std::size_t middle = values.size() / 2;
    return values.size() % 2 ? values[middle] : (values[middle - 1] + values[middle]) / 2;
}

ChildResult RunChild(const std::string& program, const std::vector<std::string>& arguments)
{
    std::string command = '"' + program + '"';
    for (const std::string& argument : arguments)
        command += " \"" + argument + '"';
    const std::string output = CommandOutput(command);
    // Plug-ins print on standard output, too. So the result is the last line.
    const std::size_t mark = output.rfind("RESULT ");
    ChildResult result;
    if (mark == std::string::npos || !(std::istringstream(output.substr(mark + 7)) >> result.seconds >>
                                       result.found >> result.processorSeconds))
        throw std::runtime_error(command + " printed no result");
    return result;
}

void Report(const std::string& what, double value, const std::string& unit, double limit)
{
    if (limit > 0)
        std::printf("%-66s %9.3f %-4s (limit %.2f)%s\n", what.c_str(), value, unit.c_str(), limit,
                    value > limit ? "  OVER" : "");
    else
        std::printf("%-66s %9.3f %s\n", what.c_str(), value, unit.c_str());
    std::fflush(stdout);
}

void ReportAtLeast(const std::string& what, double value, const std::string& unit, double limit)
{
    std::printf("%-66s %9.3f %-4s (at least %.2f)%s\n", what.c_str(), value, unit.c_str(), limit,
                value < limit ? "  UNDER" : "");
    std::fflush(stdout);
}

} // namespace bench
