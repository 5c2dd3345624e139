#include <zetcore/utility/EnvironmentVariable.h>

#include <windows.h>

#include <zetcore/string/Utf.h>

namespace zetcore::utility {

std::optional<std::wstring> EnvironmentVariable(const char* name)
{
    const std::wstring wideName = string::AsciiToUTF16(name);
    std::wstring value(256, L'\0');
    for (;;) {
        const DWORD length =
            ::GetEnvironmentVariableW(wideName.c_str(), value.data(), static_cast<DWORD>(value.size()));
        if (length == 0)
            return std::nullopt;
        if (length < value.size()) {
            value.resize(length);
            return value;
        }
        value.resize(length);
    }
}

} // namespace zetcore::utility
