#include "supervisor/process/ProcessIdentity.h"

#include <fstream>
#include <sstream>
#include <string>

#include <zetcore/string/ParseNumber.h>

namespace zetaudiofilterscan {

std::optional<ProcessIdentity> IdentifyProcess(std::uint64_t number)
{
    std::ifstream file("/proc/" + std::to_string(number) + "/stat");
    std::string text;
    std::getline(file, text, '\0');
    // The program's name stands in parentheses and may hold anything. The state follows it.
    const std::size_t name = text.rfind(')');
    if (name == text.npos)
        return std::nullopt;
    std::istringstream fields(text.substr(name + 1));
    std::string state, field;
    fields >> state;
    // An ended process keeps its number until its parent has asked about it.
    if (state == "Z" || state == "X")
        return std::nullopt;
    constexpr int fieldsBetween = 18;
    for (int skipped = 0; skipped < fieldsBetween; ++skipped)
        fields >> field;
    fields >> field;
    const auto start = zetcore::string::ParseNumber<std::uint64_t>(field);
    if (!fields || !start)
        return std::nullopt;
    return ProcessIdentity{number, *start};
}

std::optional<ProcessIdentity> IdentifyHost(std::uint64_t number)
{
    return number == 0 ? std::nullopt : IdentifyProcess(number);
}

} // namespace zetaudiofilterscan
