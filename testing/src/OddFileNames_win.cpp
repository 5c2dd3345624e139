#include <zettesting/Emulation.h>
#include <zettesting/TestPlugins.h>

namespace zettesting {

std::vector<std::filesystem::path> OddFileNames()
{
    std::vector<std::filesystem::path> names = {
        L"with  spaces",
        L"it's `quoted`",
        L"a&amp;c;$HOME %s",
        L"-starts-with-a-dash",
        L"\u00DCml\u00E4ut \u2602 \xD834\xDD1E",
        L"e\u0301 decomposed",
    };
    // Wine keeps names as UTF-8, which has no lone surrogates: it makes no such files.
    if (!IsWine())
        names.insert(names.end(), {L"lone high \xD800", L"lone low \xDC00 and more"});
    return names;
}

} // namespace zettesting
