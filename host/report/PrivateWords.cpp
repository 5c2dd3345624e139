#include "report/PrivateWords.h"

#include <algorithm>
#include <optional>

#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

/// One character of a text, and how many units it takes there.
struct Character
{
    char32_t code = 0;
    std::size_t length = 0;
};

bool IsSeparator(char32_t code)
{
    return code == U'/' || code == U'\\';
}

std::optional<unsigned> HexNumber(std::wstring_view text, std::size_t place, std::size_t digits)
{
    if (place + digits > text.size())
        return std::nullopt;
    unsigned number = 0;
    for (const wchar_t digit : text.substr(place, digits)) {
        number *= 16;
        if (digit >= L'0' && digit <= L'9')
            number += static_cast<unsigned>(digit - L'0');
        else if (digit >= L'a' && digit <= L'f')
            number += static_cast<unsigned>(digit - L'a') + 10;
        else if (digit >= L'A' && digit <= L'F')
            number += static_cast<unsigned>(digit - L'A') + 10;
        else
            return std::nullopt;
    }
    return number;
}

/// How many bytes a character takes in UTF-8 that begins with this one.
std::size_t EncodedBytes(unsigned first)
{
    return first < 0xC0 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
}

/// A character that is written as "%20", as "%C3%A9", or as a locator writes it ("%uDCFF"). Empty for
/// anything else.
std::optional<Character> EncodedCharacter(std::wstring_view text, std::size_t place)
{
    if (place + 1 < text.size() && text[place + 1] == L'u') {
        const auto unit = HexNumber(text, place + 2, 4);
        return unit ? std::optional(Character{*unit, 6}) : std::nullopt;
    }
    const auto first = HexNumber(text, place + 1, 2);
    if (!first)
        return std::nullopt;
    std::string bytes(1, static_cast<char>(*first));
    for (std::size_t at = place + 3; bytes.size() < EncodedBytes(*first); at += 3) {
        const auto next = at < text.size() && text[at] == L'%' ? HexNumber(text, at + 1, 2) : std::nullopt;
        if (!next)
            break;
        bytes.push_back(static_cast<char>(*next));
    }
    const std::wstring decoded = zetcore::string::UTF8to16(bytes);
    std::size_t used = 0;
    const char32_t code = zetcore::string::NextCodePoint(decoded, used);
    // Bytes that make no whole character are taken one by one.
    return Character{code, used == decoded.size() ? 3 * bytes.size() : 3};
}

Character CharacterAt(std::wstring_view text, std::size_t place)
{
    Character character;
    if (text[place] == L'%') {
        if (const auto encoded = EncodedCharacter(text, place))
            return *encoded;
    }
    std::size_t end = place;
    character.code = zetcore::string::NextCodePoint(text, end);
    character.length = end - place;
    return character;
}

char32_t LowerAscii(char32_t code)
{
    return code >= U'A' && code <= U'Z' ? code - U'A' + U'a' : code;
}

bool IsSameCharacter(char32_t left, char32_t right)
{
    if (IsSeparator(left))
        return IsSeparator(right);
    if (LowerAscii(left) == LowerAscii(right))
        return true;
    if (left < 0x80 && right < 0x80)
        return false;
    std::wstring leftText, rightText;
    zetcore::string::AppendCodePoint(leftText, left);
    zetcore::string::AppendCodePoint(rightText, right);
    return zetcore::string::EqualIgnoringCase(leftText, rightText);
}

/// Letters beyond ASCII count as letters, whatever they are.
bool IsPartOfWord(char32_t code)
{
    const char32_t lower = LowerAscii(code);
    return (lower >= U'a' && lower <= U'z') || (code >= U'0' && code <= U'9') || code >= 0xC0;
}

bool BeginsInsideWord(std::wstring_view text, std::size_t place)
{
    if (place == 0)
        return false;
    // In "%2Fann" the letter F is no part of the name.
    for (const std::size_t length : {std::size_t{3}, std::size_t{6}}) {
        if (place >= length && text[place - length] == L'%') {
            const auto before = EncodedCharacter(text, place - length);
            if (before && before->length == length)
                return IsPartOfWord(before->code);
        }
    }
    return IsPartOfWord(static_cast<char32_t>(text[place - 1]));
}

bool EndsInsideWord(std::wstring_view text, std::size_t end)
{
    return end < text.size() && IsPartOfWord(CharacterAt(text, end).code);
}

std::wstring WithoutSeparatorsAtTheEnd(std::wstring path)
{
    while (!path.empty() && IsSeparator(static_cast<char32_t>(path.back())))
        path.pop_back();
    return path;
}

bool NamesAFolder(const std::wstring& path)
{
    const std::size_t separator = path.find_last_of(L"/\\");
    return separator != std::wstring::npos && separator + 1 < path.size();
}

} // namespace

PrivateWords::PrivateWords(const std::vector<std::wstring>& homeFolders,
                           const std::vector<std::wstring>& names)
{
    for (const std::wstring& home : homeFolders) {
        std::wstring path = WithoutSeparatorsAtTheEnd(home);
        if (NamesAFolder(path))
            words.push_back({std::move(path), homePlaceholder, false});
    }
    for (const std::wstring& name : names) {
        if (!name.empty())
            words.push_back({name, namePlaceholder, name.size() < shortestInsideWords});
    }
    std::ranges::stable_sort(words, std::greater(), [](const Word& word) { return word.text.size(); });
}

std::size_t PrivateWords::LengthAt(const Word& word, std::wstring_view text, std::size_t place)
{
    if (word.onlyAlone && BeginsInsideWord(text, place))
        return 0;
    std::size_t at = place;
    std::size_t inWord = 0;
    while (inWord < word.text.size()) {
        if (at >= text.size())
            return 0;
        const char32_t wanted = zetcore::string::NextCodePoint(word.text, inWord);
        Character found = CharacterAt(text, at);
        if (!IsSameCharacter(wanted, found.code))
            return 0;
        at += found.length;
        // A separator may be doubled, in either text.
        if (IsSeparator(wanted)) {
            while (inWord < word.text.size() && IsSeparator(static_cast<char32_t>(word.text[inWord])))
                ++inWord;
            while (at < text.size() && IsSeparator((found = CharacterAt(text, at)).code))
                at += found.length;
        }
    }
    // "/home/ann" is not the beginning of "/home/anna".
    const bool mustEnd = word.onlyAlone || word.placeholder == homePlaceholder;
    return mustEnd && EndsInsideWord(text, at) ? 0 : at - place;
}

std::wstring PrivateWords::Replace(std::wstring_view text) const
{
    std::wstring result;
    result.reserve(text.size());
    for (std::size_t place = 0; place < text.size();) {
        std::size_t length = 0;
        for (const Word& word : words) {
            length = LengthAt(word, text, place);
            if (length > 0) {
                result += word.placeholder;
                break;
            }
        }
        if (length == 0)
            result += text[place++];
        place += length;
    }
    return result;
}

} // namespace zetaudiopluginmanager
