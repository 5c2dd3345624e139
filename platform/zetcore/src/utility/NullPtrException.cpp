#include <zetcore/utility/NullPtrException.h>

namespace zetcore::utility {

null_ptr_exception::null_ptr_exception(const std::string& typeName)
    : std::runtime_error("Null pointer where an object of type " + typeName + " is required")
{}

null_ptr_exception::~null_ptr_exception() = default;

void DoThrowNullPtrException(const char* typeName)
{
    throw null_ptr_exception(typeName ? typeName : "unknown");
}

} // namespace zetcore::utility
