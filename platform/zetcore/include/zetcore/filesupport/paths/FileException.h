#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

#include <zetcore/Export.h>

namespace zetcore::filesupport {

/// A file or folder operation failed. The message names the file and the cause, in UTF-8.
class ZETCORE_API file_exception : public std::runtime_error
{
  public:
    /// `operation` is a verb phrase ("write", "create folder"); `path` is the file concerned.
    file_exception(const std::string& operation, const std::wstring& path, std::error_code cause);
    ~file_exception() override;

    const std::wstring& Path() const noexcept { return path; }
    std::error_code Cause() const noexcept { return cause; }

  private:
    std::wstring path;
    std::error_code cause;
};

} // namespace zetcore::filesupport
