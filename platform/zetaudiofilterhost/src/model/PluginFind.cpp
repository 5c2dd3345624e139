#include <zetaudiofilterhost/PluginFind.h>

#include <cstdint>
#include <type_traits>

namespace zetaudiofilterhost {

namespace {

/// Stands behind each text, so that nothing is found across the border of two texts. In a text itself, this
/// byte can only be the first of six bytes, and a byte that begins with the bits 10 follows. Behind a
/// separator there is never such a byte, but the first byte of the next text.
constexpr char separator = '\xFF';

/// The find test is a search for bytes, and this makes a text into bytes. A unit below 0x80 is one byte, and
/// a capital letter becomes a small one. Any other unit is two to six bytes, as in UTF-8, but for every value
/// of up to 32 bits, so that texts that are no Unicode can be found, too. The first byte of a unit begins
/// with as many ones as the unit has bytes, and then holds the unit's highest bits. Each further byte begins
/// with the bits 10 and holds the next six. So the first byte of a unit looks like no further byte, and tells
/// how many of them follow. The bytes of a find text are therefore found exactly where its units are. Nearly
/// all texts are ASCII. With one byte for each letter they are short, and the search is fast.
void AppendFolded(std::wstring_view text, std::string& folded)
{
    for (const wchar_t character : text) {
        const auto unit = static_cast<std::uint32_t>(static_cast<std::make_unsigned_t<wchar_t>>(character));
        if (unit < 0x80) {
            const bool isCapital = unit >= 'A' && unit <= 'Z';
            folded.push_back(static_cast<char>(isCapital ? unit - 'A' + 'a' : unit));
            continue;
        }
        // The first byte has room for 6 bits less one for each further byte, which has room for 6 bits
        // itself.
        unsigned furtherBytes = 1;
        while (furtherBytes < 5 && unit >> (5 * furtherBytes + 6) != 0)
            ++furtherBytes;
        folded.push_back(static_cast<char>((0xFFU << (7 - furtherBytes)) | (unit >> (6 * furtherBytes))));
        while (furtherBytes-- > 0)
            folded.push_back(static_cast<char>(0x80U | (unit >> (6 * furtherBytes) & 0x3FU)));
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
