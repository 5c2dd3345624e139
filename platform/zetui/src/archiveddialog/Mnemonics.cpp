#include "archiveddialog/Mnemonics.h"

#include <algorithm>
#include <functional>
#include <string_view>

namespace zetui::ui {

namespace {

constexpr std::wstring_view alphabet = L"abcdefghijklmnopqrstuvwxyz0123456789";
/// A line below these is too short.
constexpr std::wstring_view narrowLetters = L"ijl";
/// A line below these runs through them.
constexpr std::wstring_view lettersWithTails = L"gjpqy";
constexpr std::wstring_view vowels = L"aeiou";

wchar_t InLowerCase(wchar_t letter)
{
    return letter >= L'A' && letter <= L'Z' ? static_cast<wchar_t>(letter - L'A' + L'a') : letter;
}

bool IsLetter(wchar_t letter)
{
    return alphabet.find(InLowerCase(letter)) != std::wstring_view::npos;
}

/// The letter that the text marks itself; 0 for none.
wchar_t OwnLetter(const std::wstring& text)
{
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] == L'&' && text[++i] != L'&')
            return InLowerCase(text[i]);
    }
    return 0;
}

/// The lower, the better.
int Rank(const std::wstring& text, std::size_t place)
{
    if (place == 0)
        return 0;
    const auto isOneOf = [letter = InLowerCase(text[place])](std::wstring_view letters) {
        return letters.find(letter) != std::wstring_view::npos;
    };
    const bool startsWord = !IsLetter(text[place - 1]) && text[place - 1] < 128;
    if (startsWord && !isOneOf(narrowLetters))
        return 1;
    if (isOneOf(narrowLetters) || isOneOf(lettersWithTails))
        return 4;
    // A word is remembered by its consonants.
    return isOneOf(vowels) ? 3 : 2;
}

/// The places of the letters that may be the text's mnemonic, best first, each letter once.
std::vector<Mnemonic> LettersIn(const std::wstring& text)
{
    std::vector<Mnemonic> letters;
    for (std::size_t place = 0; place < text.size(); ++place) {
        if (IsLetter(text[place]))
            letters.push_back({InLowerCase(text[place]), place});
    }
    std::stable_sort(letters.begin(), letters.end(), [&text](const Mnemonic& one, const Mnemonic& other) {
        return Rank(text, *one.place) < Rank(text, *other.place);
    });
    std::vector<Mnemonic> each;
    for (const Mnemonic& letter : letters) {
        if (std::none_of(each.begin(), each.end(),
                         [&letter](const Mnemonic& taken) { return taken.letter == letter.letter; }))
            each.push_back(letter);
    }
    return each;
}

std::vector<Mnemonic> Candidates(const MnemonicText& text)
{
    if (text.text.empty() || text.text.find(L'&') != std::wstring::npos)
        return {};
    std::vector<Mnemonic> candidates = LettersIn(text.text);
    if (!candidates.empty())
        return candidates;
    for (const Mnemonic& letter : LettersIn(text.original))
        candidates.push_back({letter.letter, std::nullopt});
    for (const wchar_t letter : alphabet)
        candidates.push_back({letter, std::nullopt});
    return candidates;
}

} // namespace

std::vector<std::optional<Mnemonic>> ChooseMnemonics(const std::vector<MnemonicText>& texts)
{
    std::vector<std::vector<Mnemonic>> candidates;
    std::wstring own;
    for (const MnemonicText& text : texts) {
        candidates.push_back(Candidates(text));
        if (const wchar_t letter = OwnLetter(text.text))
            own += letter;
    }
    std::vector<std::optional<Mnemonic>> chosen(texts.size());
    // A text whose letters are all taken makes others take another of theirs. `tried` are the letters that
    // have been asked for on the way.
    std::wstring tried;
    const std::function<bool(std::size_t)> find = [&](std::size_t text) {
        for (const Mnemonic& candidate : candidates[text]) {
            if (own.find(candidate.letter) != std::wstring::npos ||
                tried.find(candidate.letter) != std::wstring::npos)
                continue;
            const auto holder = std::find_if(chosen.begin(), chosen.end(), [&candidate](const auto& taken) {
                return taken && taken->letter == candidate.letter;
            });
            if (holder != chosen.end()) {
                tried += candidate.letter;
                if (!find(static_cast<std::size_t>(holder - chosen.begin())))
                    continue;
            }
            chosen[text] = candidate;
            return true;
        }
        return false;
    };
    // Free letters first, so that nobody gives way without need.
    for (std::size_t text = 0; text < texts.size(); ++text) {
        for (const Mnemonic& candidate : candidates[text]) {
            const bool isTaken = own.find(candidate.letter) != std::wstring::npos ||
                                 std::any_of(chosen.begin(), chosen.end(), [&candidate](const auto& taken) {
                                     return taken && taken->letter == candidate.letter;
                                 });
            if (!isTaken) {
                chosen[text] = candidate;
                break;
            }
        }
        tried.clear();
        if (!chosen[text])
            find(text);
    }
    return chosen;
}

std::wstring MarkMnemonic(const std::wstring& text, const Mnemonic& mnemonic)
{
    std::wstring marked = text;
    if (mnemonic.place) {
        marked.insert(*mnemonic.place, 1, L'&');
        return marked;
    }
    // The dots and the colon stay at the end.
    constexpr std::wstring_view ends = L".:\u2026\uFF1A";
    std::size_t end = marked.size();
    while (end > 0 && ends.find(marked[end - 1]) != std::wstring_view::npos)
        --end;
    const auto upper = static_cast<wchar_t>(
        mnemonic.letter >= L'a' && mnemonic.letter <= L'z' ? mnemonic.letter - L'a' + L'A' : mnemonic.letter);
    return marked.insert(end, std::wstring(L"(&") + upper + L")");
}

} // namespace zetui::ui
