#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zetaudiopluginmanager {

/// Takes what tells who somebody is out of a text that others will read. Any thread.
///
/// It finds a home folder and a name in any letter case, also where single characters are percent-encoded
/// ("%2Fhome%2Fann%20lee") or where a separator is written otherwise ("C:/Users", "C:\\\\Users").
class PrivateWords
{
  public:
    static constexpr std::wstring_view homePlaceholder = L"<home>", namePlaceholder = L"<user>";
    /// A shorter name is replaced only where it stands alone, because it is part of many other words.
    static constexpr std::size_t shortestInsideWords = 4;

    /// Folders without a name (such as "/") and empty words are passed over.
    PrivateWords(const std::vector<std::wstring>& homeFolders, const std::vector<std::wstring>& names);

    /// `text` may hold stray units, and so may the words.
    std::wstring Replace(std::wstring_view text) const;

  private:
    struct Word
    {
        std::wstring text;
        std::wstring_view placeholder;
        bool onlyAlone;
    };

    /// The length of the word in the text at that place, and 0 when another one stands there.
    static std::size_t LengthAt(const Word& word, std::wstring_view text, std::size_t place);

    /// The longest one comes first.
    std::vector<Word> words;
};

} // namespace zetaudiopluginmanager
