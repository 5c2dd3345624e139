#include <zetaudiofilterhost/PluginFind.h>

#include <cstdint>
#include <type_traits>

namespace zetaudiofilterhost {

namespace {

/// Between texts. No other byte of a text comes after it but the next text's first, so that nothing is found
/// across it.
constexpr char separator = '\xFF';

/// One byte for ASCII, else as UTF-8 does it, for whatever unit, valid or not: a short text is what makes the
/// search fast.
void AppendFolded(std::wstring_view text, std::string& folded)
{
    for (const wchar_t character : text) {
        const auto unit = static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<wchar_t>>(character));
        if (unit < 0x80) {
            const bool isCapital = unit >= 'A' && unit <= 'Z';
            folded.push_back(static_cast<char>(isCapital ? unit - 'A' + 'a' : unit));
            continue;
        }
        unsigned more = 1;
        while (more < 5 && unit >> (5 * more + 6) != 0)
            ++more;
        // As many ones as there are bytes, then a zero: no unit's bytes begin another's.
        folded.push_back(static_cast<char>((0xFFU << (7 - more)) | (unit >> (6 * more))));
        while (more-- > 0)
            folded.push_back(static_cast<char>(0x80U | (unit >> (6 * more) & 0x3FU)));
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
