#include <zetcore/utility/EnvironmentVariable.h>

#include <cstdlib>

#include <zetcore/string/Utf.h>

namespace zetcore::utility {

std::optional<std::wstring> EnvironmentVariable(const char* name)
{
    const char* value = std::getenv(name);
    if (value == nullptr || *value == '\0')
        return std::nullopt;
    return string::UTF8to16(value);
}

} // namespace zetcore::utility
