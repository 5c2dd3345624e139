#include <zetaudiofilterhost/PluginFind.h>

#include <zetcore/string/UtfUnits.h>

namespace zetaudiofilterhost {

namespace {

/// Between texts. No other byte of a text comes after it but the next text's first, so that nothing is found
/// across it.
constexpr char separator = '\xFF';

/// Every unit in as many bytes as UTF-8 gives it: a short text is what makes the search fast. Halves of pairs
/// and stray units have bytes of their own, too, and no unit's bytes begin another's, so that the bytes of a
/// text are found where its units are and nowhere else. (U+FFFD stands for units above U+10FFFF, which no
/// conversion makes.)
void AppendFolded(std::wstring_view text, std::string& folded)
{
    for (const wchar_t unit : text) {
        const bool isCapital = unit >= L'A' && unit <= L'Z';
        zetcore::string::AppendUTF8(folded, static_cast<char32_t>(isCapital ? unit - L'A' + L'a' : unit));
    }
}

} // namespace

PluginFind::PluginFind(std::wstring_view findText)
{
    AppendFolded(findText, folded);
}

bool PluginFind::Keeps(std::string_view texts) const noexcept
{
    return texts.find(folded) != std::string_view::npos;
}

void PluginFind::AppendTexts(std::wstring_view name, std::wstring_view path, std::wstring_view version,
                             std::string& texts)
{
    for (const std::wstring_view text : {name, path, version}) {
        AppendFolded(text, texts);
        texts.push_back(separator);
    }
}

} // namespace zetaudiofilterhost
