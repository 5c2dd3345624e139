#include <zetcore/string/OutputTail.h>

#include <algorithm>

#include <zetcore/string/Utf.h>

namespace zetcore::string {

namespace {

// Enough for the last lines of any message that a person would read.
constexpr std::size_t maxTail = 4096;

} // namespace

void OutputTail::Append(std::string_view bytes)
{
    tail.append(bytes.substr(bytes.size() - std::min(bytes.size(), maxTail)));
    if (tail.size() > maxTail)
        tail.erase(0, tail.size() - maxTail);
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
    // Four bytes make a character at most.
    const bool cut = text.size() > maxCharacters * 4;
    std::wstring wide = ForDisplay(UTF8to16(cut ? text.substr(0, maxCharacters * 4) : text));
    if (const auto first = wide.find_first_not_of(L' '); first != std::wstring::npos)
        wide = wide.substr(first, wide.find_last_not_of(L' ') - first + 1);
    else
        wide.clear();
    if (cut || wide.size() > maxCharacters)
        wide = wide.substr(0, maxCharacters) + L"...";
    return UTF16to8(wide);
}

} // namespace zetcore::string
