#include "WorkerArguments.h"

#include <zetcore/string/ParseNumber.h>

namespace zetaudiofilterscan {

namespace {

bool ReadNumber(std::string_view text, std::uint64_t& number)
{
    const auto read = zetcore::string::ParseNumber<std::uint64_t>(text);
    number = read.value_or(0);
    return read.has_value();
}

} // namespace

std::vector<std::string> WorkerArguments::ToArguments() const
{
    return {option, std::to_string(channel), std::to_string(page), std::to_string(parentProcess)};
}

std::optional<WorkerArguments> WorkerArguments::Read(const std::vector<std::string_view>& arguments)
{
    WorkerArguments result;
    if (arguments.size() != 4 || arguments[0] != option || !ReadNumber(arguments[1], result.channel) ||
        !ReadNumber(arguments[2], result.page) || !ReadNumber(arguments[3], result.parentProcess))
        return std::nullopt;
    return result;
}

} // namespace zetaudiofilterscan
