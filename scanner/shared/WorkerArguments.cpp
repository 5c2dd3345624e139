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
    std::vector<std::string> arguments{option, std::to_string(channel), std::to_string(page),
                                       std::to_string(parentProcess)};
    if (makesCopies)
        arguments.push_back(copiesOption);
    return arguments;
}

std::optional<WorkerArguments> WorkerArguments::Read(const std::vector<std::string_view>& arguments)
{
    WorkerArguments result;
    result.makesCopies = arguments.size() == 5 && arguments[4] == copiesOption;
    const std::size_t count = result.makesCopies ? 5 : 4;
    if (arguments.size() != count || arguments[0] != option || !ReadNumber(arguments[1], result.channel) ||
        !ReadNumber(arguments[2], result.page) || !ReadNumber(arguments[3], result.parentProcess))
        return std::nullopt;
    return result;
}

} // namespace zetaudiofilterscan
