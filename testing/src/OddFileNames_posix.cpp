#include <zettesting/TestPlugins.h>

namespace zettesting {

std::vector<std::filesystem::path> OddFileNames()
{
    return {
        "with  spaces ",
        "it's \"quoted\" `too`",
        "two\nlines",
        "tab\tand\rreturn",
        "back\\slash",
        "a<b>&amp;c;$HOME %s",
        "-starts-with-a-dash",
        "\xC3\x9Cml\xC3\xA4ut \xE2\x98\x82 \xF0\x9D\x84\x9E", // two, three and four bytes long
        "e\xCC\x81 decomposed",
        "latin1 \xE9\xFF",
        "surrogate \xED\xA0\x80 overlong \xC0\xAF cut \xE2\x82",
    };
}

} // namespace zettesting
