#include "banned/CrashWords.h"

#include <array>
#include <charconv>

#include <windows.h>

namespace zetaudiopluginhost {

std::string CrashWords(std::int64_t code, const zetcore::config::Localizer& language)
{
    constexpr DWORD stackBufferOverrun = 0xC0000409;
    constexpr DWORD heapCorruption = 0xC0000374;
    constexpr DWORD fatalAppExit = 0x40000015;
    constexpr DWORD cppException = 0xE06D7363;
    constexpr DWORD gccException = 0x20474343;
    switch (static_cast<DWORD>(code)) {
    case EXCEPTION_ACCESS_VIOLATION:
        return language.Localize("$$$/AudioPluginManager/Crash/AccessViolation=access violation");
    case EXCEPTION_STACK_OVERFLOW:
        return language.Localize("$$$/AudioPluginManager/Crash/StackOverflow=stack overflow");
    case EXCEPTION_ILLEGAL_INSTRUCTION:
    case EXCEPTION_PRIV_INSTRUCTION:
        return language.Localize("$$$/AudioPluginManager/Crash/IllegalInstruction=illegal instruction");
    case EXCEPTION_INT_DIVIDE_BY_ZERO:
    case EXCEPTION_INT_OVERFLOW:
    case EXCEPTION_FLT_DIVIDE_BY_ZERO:
    case EXCEPTION_FLT_INVALID_OPERATION:
        return language.Localize("$$$/AudioPluginManager/Crash/ArithmeticError=arithmetic error");
    case EXCEPTION_IN_PAGE_ERROR:
        return language.Localize("$$$/AudioPluginManager/Crash/PageError=page error");
    case EXCEPTION_DATATYPE_MISALIGNMENT:
        return language.Localize("$$$/AudioPluginManager/Crash/MisalignedData=misaligned data");
    case EXCEPTION_BREAKPOINT:
        return language.Localize("$$$/AudioPluginManager/Crash/Breakpoint=breakpoint");
    case stackBufferOverrun:
        return language.Localize("$$$/AudioPluginManager/Crash/StackBufferOverrun=stack buffer overrun");
    case heapCorruption:
        return language.Localize("$$$/AudioPluginManager/Crash/HeapCorruption=heap corruption");
    case fatalAppExit:
        return language.Localize("$$$/AudioPluginManager/Crash/Aborted=aborted");
    case cppException:
    case gccException:
        return language.Localize("$$$/AudioPluginManager/Crash/UncaughtException=uncaught exception");
    default:
        break;
    }
    std::array<char, 16> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(),
                                   static_cast<unsigned long>(static_cast<DWORD>(code)), 16);
    return language.Localize("$$$/AudioPluginManager/Crash/Exception=exception @0",
                             {"0x" + std::string(digits.data(), end.ptr)});
}

} // namespace zetaudiopluginhost
