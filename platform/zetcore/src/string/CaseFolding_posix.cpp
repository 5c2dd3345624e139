#include "string/CaseFolding.h"

#include <algorithm>
#include <cwctype>

#include <locale.h>
#include <wctype.h>

namespace zetcore::string {

namespace {

/// A locale that knows Unicode. The program's own one is "C" unless a host or a plug-in has changed it, and
/// "C" folds nothing but ASCII.
locale_t UnicodeLocale()
{
    static const locale_t unicode = [] {
        for (const char* name : {"C.UTF-8", "C.utf8", "en_US.UTF-8"}) {
            if (const locale_t made = ::newlocale(LC_CTYPE_MASK, name, locale_t{}))
                return made;
        }
        return ::newlocale(LC_CTYPE_MASK, "C", locale_t{});
    }();
    return unicode;
}

wint_t Fold(wchar_t unit)
{
    const auto character = static_cast<wint_t>(unit);
    // The dotted capital I and the dotless small i have partners in the other case, but Unicode folds them to
    // themselves only.
    if (character == 0x130 || character == 0x131)
        return character;
    const locale_t unicode = UnicodeLocale();
    return ::towlower_l(::towupper_l(character, unicode), unicode);
}

} // namespace

bool EqualFolded(std::wstring_view left, std::wstring_view right)
{
    return std::equal(left.begin(), left.end(), right.begin(), right.end(),
                      [](wchar_t a, wchar_t b) { return a == b || Fold(a) == Fold(b); });
}

} // namespace zetcore::string
