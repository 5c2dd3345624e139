#include "FigureReport.h"

#include <cstdio>

namespace bench {

namespace {

constexpr int textWidth = 52;

}

void FigureReport::Note(const std::string& what, double value, const std::string& unit)
{
    std::printf("  %-*s %10.2f %s\n", textWidth, what.c_str(), value, unit.c_str());
    std::fflush(stdout);
}

void FigureReport::AtMost(const std::string& what, double value, const std::string& unit, double limit)
{
    if (!holding) {
        Note(what, value, unit);
        return;
    }
    kept = kept && value <= limit;
    std::printf("  %-*s %10.2f %-4s limit %7.2f  %s\n", textWidth, what.c_str(), value, unit.c_str(), limit,
                value <= limit ? "ok" : "MISSED");
    std::fflush(stdout);
}

void FigureReport::Require(const std::string& what, bool isKept)
{
    if (isKept)
        return;
    kept = false;
    std::fprintf(stderr, "list_bench: %s\n", what.c_str());
}

const char* FigureReport::MoreThanOne(double ratio)
{
    if (!holding)
        return "";
    kept = kept && ratio > 1;
    return ratio > 1 ? "ok" : "MISSED";
}

} // namespace bench
