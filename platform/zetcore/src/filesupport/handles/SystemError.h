#pragma once

#include <string>
#include <system_error>

namespace zetcore::filesupport {

/// Returns the calling thread's last error of a system call.
std::error_code LastSystemError();
/// Returns the system's words for the error, in UTF-8.
std::string DescribeError(std::error_code error);

} // namespace zetcore::filesupport
