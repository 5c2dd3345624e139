#include "supervisor/workers/ProcessEnd.h"

#include <array>
#include <charconv>

#include <windows.h>

namespace zetaudiofilterscan {

std::string CrashText(long long code)
{
    constexpr DWORD stackBufferOverrun = 0xC0000409;
    constexpr DWORD heapCorruption = 0xC0000374;
    constexpr DWORD fatalAppExit = 0x40000015;
    constexpr DWORD cppException = 0xE06D7363;
    constexpr DWORD gccException = 0x20474343;
    switch (static_cast<DWORD>(code)) {
    case EXCEPTION_ACCESS_VIOLATION:
        return "access violation";
    case EXCEPTION_STACK_OVERFLOW:
        return "stack overflow";
    case EXCEPTION_ILLEGAL_INSTRUCTION:
    case EXCEPTION_PRIV_INSTRUCTION:
        return "illegal instruction";
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
    case EXCEPTION_INT_OVERFLOW:
    case EXCEPTION_FLT_DIVIDE_BY_ZERO:
    case EXCEPTION_FLT_INVALID_OPERATION:
        return "arithmetic error";
    case EXCEPTION_IN_PAGE_ERROR:
        return "page error";
    case EXCEPTION_DATATYPE_MISALIGNMENT:
        return "misaligned data";
    case EXCEPTION_BREAKPOINT:
        return "breakpoint";
    case stackBufferOverrun:
        return "stack buffer overrun";
    case heapCorruption:
        return "heap corruption";
    case fatalAppExit:
        return "aborted";
    case cppException:
    case gccException:
        return "uncaught exception";
    default:
        break;
    }
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<unsigned long>(static_cast<DWORD>(code)), 16);
    return "exception 0x" + std::string(digits.data(), end.ptr);
}

} // namespace zetaudiofilterscan
