#pragma once

#include <stdexcept>
#include <string>

#include <zetcore/Export.h>

namespace zetcore::utility {

/// A null object was given where one is required. The message names the expected type.
class ZETCORE_API null_ptr_exception : public std::runtime_error
{
  public:
    explicit null_ptr_exception(const std::string& typeName);
    ~null_ptr_exception() override;
};

[[noreturn]] ZETCORE_API void DoThrowNullPtrException(const char* typeName);

} // namespace zetcore::utility
