#include <zetcore/filesupport/paths/FileException.h>

#include <zetcore/filesupport/handles/SystemError.h>
#include <zetcore/string/Utf.h>

namespace zetcore::filesupport {

namespace {

std::string Message(const std::string& operation, const std::wstring& path, std::error_code cause)
{
    return "Cannot " + operation + " \"" + string::UTF16to8(string::ForDisplay(path)) +
           "\": " + DescribeError(cause);
}

} // namespace

file_exception::file_exception(const std::string& operation, const std::wstring& failedPath,
                               std::error_code causeOfFailure)
    : std::runtime_error(Message(operation, failedPath, causeOfFailure)), path(failedPath),
      cause(causeOfFailure)
{}

file_exception::~file_exception() = default;

} // namespace zetcore::filesupport
