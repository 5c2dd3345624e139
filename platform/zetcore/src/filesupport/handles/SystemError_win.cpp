#include <zetcore/filesupport/handles/SystemError.h>

#include <iterator>

#include <windows.h>

#include <zetcore/string/Utf.h>

namespace zetcore::filesupport {

std::error_code LastSystemError()
{
    return {static_cast<int>(::GetLastError()), std::system_category()};
}

std::string DescribeError(std::error_code error)
{
    if (error.category() != std::system_category())
        return error.message();
    wchar_t text[512];
    DWORD length = ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
                                    static_cast<DWORD>(error.value()), 0, text,
                                    static_cast<DWORD>(std::size(text)), nullptr);
    while (length > 0 && (text[length - 1] == L'\n' || text[length - 1] == L'\r' || text[length - 1] == L'.'))
        --length;
    if (length == 0)
        return "system error " + std::to_string(error.value());
    return string::UTF16to8({text, length});
}

} // namespace zetcore::filesupport
