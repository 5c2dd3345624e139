#include <zetcore/string/OutputTail.h>

#include <algorithm>

#include <zetcore/string/Utf.h>
#include <zetcore/string/UtfUnits.h>

namespace zetcore::string {

namespace {

// This is enough for the last lines of any message that a person would read.
constexpr std::size_t maxTail = 4096;

} // namespace

void OutputTail::Append(std::string_view bytes)
{
    const bool isCut = tail.size() + bytes.size() > maxTail;
    tail.append(bytes.substr(bytes.size() - std::min(bytes.size(), maxTail)));
    if (!isCut)
        return;
    std::size_t cut = tail.size() - std::min(tail.size(), maxTail);
    // The first byte of a character may be gone by now. Its other bytes go, too.
    while (cut < tail.size() && IsUTF8Continuation(tail[cut]))
        ++cut;
    tail.erase(0, cut);
}

std::string OutputTail::LastLine() const
{
    constexpr char blanks[] = " \t\r\n\0";
    const std::string_view blankSet(blanks, sizeof blanks - 1);
    const auto end = tail.find_last_not_of(blankSet);
    if (end == std::string::npos)
        return {};
    const auto lineEnd = tail.find_last_of("\r\n", end);
    const auto begin = lineEnd == std::string::npos ? 0 : lineEnd + 1;
    return tail.substr(begin, end - begin + 1);
}

std::string TidyLine(std::string_view text, std::size_t maxCharacters)
{
    const std::wstring wide = ForDisplay(UTF8to16(text));
    const auto first = wide.find_first_not_of(L' ');
    if (first == std::wstring::npos)
        return {};
    const std::wstring_view line =
        std::wstring_view(wide).substr(first, wide.find_last_not_of(L' ') - first + 1);
    std::size_t end = 0;
    for (std::size_t count = 0; count < maxCharacters && end < line.size(); ++count)
        NextCodePoint(line, end);
    return UTF16to8(line.substr(0, end)) + (end < line.size() ? "..." : "");
}

} // namespace zetcore::string
