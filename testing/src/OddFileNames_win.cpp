#include <zettesting/TestPlugins.h>

namespace zettesting {

std::vector<std::filesystem::path> OddFileNames()
{
    return {
        L"with  spaces",
        L"it's `quoted`",
        L"a&amp;c;$HOME %s",
        L"-starts-with-a-dash",
        L"\u00DCml\u00E4ut \u2602 \xD834\xDD1E",
        L"e\u0301 decomposed",
        L"lone high \xD800",
        L"lone low \xDC00 and more",
    };
}

} // namespace zettesting
