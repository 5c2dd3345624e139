#include "text/XmlText.h"

#include <array>
#include <charconv>
#include <cstdint>

#include <zetcore/string/Utf.h>
#include <zetcore/string/UtfUnits.h>

namespace zetaudiofilterhost {

namespace {

using namespace std::string_view_literals;

constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";

/// The text that stands for each ASCII character. It is empty for a character that stands for itself.
constexpr std::array<std::string_view, 128> MakeEscapes()
{
    std::array<std::string_view, 128> escapes{};
    for (std::size_t control = 0; control < 0x20; ++control)
        escapes[control] = " "sv;
    escapes[0x7f] = " "sv;
    escapes['\t'] = "&#9;"sv;
    escapes['\n'] = "&#10;"sv;
    escapes['\r'] = "&#13;"sv;
    escapes['"'] = "&quot;"sv;
    escapes['&'] = "&amp;"sv;
    escapes['<'] = "&lt;"sv;
    escapes['>'] = "&gt;"sv;
    return escapes;
}
constexpr std::array<std::string_view, 128> asciiEscapes = MakeEscapes();

bool IsNoXmlCharacter(char32_t codePoint)
{
    return codePoint == 0xfffe || codePoint == 0xffff;
}

void OpenAttribute(std::string& xml, std::string_view name)
{
    xml += ' ';
    xml += name;
    xml += "=\""sv;
}

template<typename Number>
void AppendNumber(std::string& xml, std::string_view name, Number value)
{
    std::array<char, 24> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value).ptr;
    OpenAttribute(xml, name);
    xml.append(digits.data(), end);
    xml += '"';
}

} // namespace

std::size_t FindUnreadableByte(std::string_view text)
{
    for (std::size_t index = 0; index < text.size();) {
        const auto byte = static_cast<unsigned char>(text[index]);
        if (byte >= 0x20 && byte < 0x80) {
            ++index;
            continue;
        }
        if (byte < 0x20 && byte != '\t' && byte != '\n' && byte != '\r')
            return index;
        const std::size_t length = zetcore::string::UTF8Length(text, index);
        if (length == 0)
            return index;
        index += length;
    }
    return text.npos;
}

void AppendXmlEscaped(std::string& xml, std::string_view utf8)
{
    std::size_t plainFrom = 0;
    const auto flushPlain = [&](std::size_t to) { xml.append(utf8, plainFrom, to - plainFrom); };
    for (std::size_t index = 0; index < utf8.size();) {
        const auto byte = static_cast<unsigned char>(utf8[index]);
        std::size_t length = 1;
        std::string_view instead;
        if (byte < 0x80) {
            instead = asciiEscapes[byte];
        } else {
            length = zetcore::string::UTF8Length(utf8, index);
            const std::string_view sequence = utf8.substr(index, length);
            if (length == 0 || sequence == "\xEF\xBF\xBE"sv || sequence == "\xEF\xBF\xBF"sv)
                instead = replacementCharacter;
        }
        const std::size_t next = index + (length == 0 ? 1 : length);
        if (!instead.empty()) {
            flushPlain(index);
            xml += instead;
            plainFrom = next;
        }
        index = next;
    }
    flushPlain(utf8.size());
}

void AppendXmlEscaped(std::string& xml, std::wstring_view text)
{
    for (std::size_t index = 0; index < text.size();) {
        const auto unit = static_cast<std::uint32_t>(text[index]);
        if (unit < 0x80) {
            if (const std::string_view escape = asciiEscapes[unit]; escape.empty())
                xml += static_cast<char>(unit);
            else
                xml += escape;
            ++index;
            continue;
        }
        const bool stray = zetcore::string::IsStrayUnit(text, index);
        const char32_t codePoint = zetcore::string::NextCodePoint(text, index);
        if (stray || IsNoXmlCharacter(codePoint))
            xml += replacementCharacter;
        else
            zetcore::string::AppendUTF8(xml, codePoint);
    }
}

void AppendXmlAttribute(std::string& xml, std::string_view name, std::string_view value)
{
    OpenAttribute(xml, name);
    AppendXmlEscaped(xml, value);
    xml += '"';
}

void AppendXmlAttribute(std::string& xml, std::string_view name, std::wstring_view value)
{
    OpenAttribute(xml, name);
    AppendXmlEscaped(xml, value);
    xml += '"';
}

void AppendXmlNumber(std::string& xml, std::string_view name, std::uint64_t value)
{
    AppendNumber(xml, name, value);
}

void AppendXmlNumber(std::string& xml, std::string_view name, std::int64_t value)
{
    AppendNumber(xml, name, value);
}

void AppendXmlBoolean(std::string& xml, std::string_view name, bool value)
{
    OpenAttribute(xml, name);
    xml += value ? "true\""sv : "false\""sv;
}

} // namespace zetaudiofilterhost
