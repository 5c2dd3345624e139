#pragma once

#include <string>
#include <system_error>

namespace zetcore::filesupport {

/// The calling thread's last error of a system call.
std::error_code LastSystemError();
/// The system's words for it, in UTF-8.
std::string DescribeError(std::error_code error);

} // namespace zetcore::filesupport
