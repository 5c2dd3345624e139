#include <zetaudiofilterhost/PluginFind.h>

#include <zetcore/string/UtfUnits.h>

namespace zetaudiofilterhost {

namespace {

/// Stands behind each text, so that nothing is found across the border of two texts. UTF-8 never has this
/// byte.
constexpr char separator = '\xFF';

/// Writes each unit as the bytes that UTF-8 gives it, with capital letters made small. Halves of pairs and
/// stray units get bytes of their own, too. In UTF-8, the first byte of a unit differs from all further
/// bytes, and tells how many follow. Therefore the bytes of a find text occur exactly where its units occur.
/// Nearly all texts are ASCII, with one byte for each letter, and a search in short texts is fast. (U+FFFD
/// stands for units above U+10FFFF, which no conversion makes.)
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
