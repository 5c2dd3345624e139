#include <zetcore/filesupport/handles/SystemError.h>

#include <cerrno>

namespace zetcore::filesupport {

std::error_code LastSystemError()
{
    return {errno, std::generic_category()};
}

std::string DescribeError(std::error_code error)
{
    return error.message();
}

} // namespace zetcore::filesupport
