#pragma once

#include <string>
#include <system_error>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// Returns the calling thread's last error of a system call.
ZETCORE_API std::error_code LastSystemError();
/// Returns the system's words for the error, in UTF-8. `std::error_code::message` has them in the code page
/// of the machine on Windows.
ZETCORE_API std::string DescribeError(std::error_code error);

} // namespace zetcore::filesupport
