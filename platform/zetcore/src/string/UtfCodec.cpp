#include "string/UtfCodec.h"

namespace zetcore::string::codec {

namespace {

/// A first byte promises the sequence's length, the bits it brings and the range of the second byte (narrower
/// than 0x80 to 0xBF where that keeps out long forms, surrogates and values above U+10FFFF).
struct LeadByte
{
    std::size_t length;
    char32_t bits;
    unsigned char secondFrom;
    unsigned char secondTo;
};

LeadByte ReadLeadByte(unsigned char byte)
{
    const auto bits = [byte](unsigned mask) { return static_cast<char32_t>(byte & mask); };
    if (byte < 0x80)
        return {1, byte, 0, 0};
    if (byte < 0xC2)
        return {0, 0, 0, 0};
    if (byte < 0xE0)
        return {2, bits(0x1F), 0x80, 0xBF};
    if (byte == 0xE0)
        return {3, bits(0x0F), 0xA0, 0xBF};
    if (byte == 0xED)
        return {3, bits(0x0F), 0x80, 0x9F};
    if (byte < 0xF0)
        return {3, bits(0x0F), 0x80, 0xBF};
    if (byte == 0xF0)
        return {4, bits(0x07), 0x90, 0xBF};
    if (byte < 0xF4)
        return {4, bits(0x07), 0x80, 0xBF};
    if (byte == 0xF4)
        return {4, bits(0x07), 0x80, 0x8F};
    return {0, 0, 0, 0};
}

Decoded DecodeAfter(const LeadByte& lead, std::string_view bytes, std::size_t index)
{
    if (lead.length == 0 || bytes.size() - index < lead.length)
        return {};
    char32_t codePoint = lead.bits;
    for (std::size_t offset = 1; offset < lead.length; ++offset) {
        const auto byte = static_cast<unsigned char>(bytes[index + offset]);
        const unsigned char from = offset == 1 ? lead.secondFrom : 0x80;
        const unsigned char to = offset == 1 ? lead.secondTo : 0xBF;
        if (byte < from || byte > to)
            return {};
        codePoint = (codePoint << 6) | (byte & 0x3Fu);
    }
    return {codePoint, lead.length};
}

void AppendByte(std::string& bytes, char32_t value)
{
    bytes.push_back(static_cast<char>(static_cast<unsigned char>(value)));
}

} // namespace

Decoded DecodeUTF8(std::string_view bytes, std::size_t index)
{
    if (index >= bytes.size())
        return {};
    return DecodeAfter(ReadLeadByte(static_cast<unsigned char>(bytes[index])), bytes, index);
}

Decoded DecodeSurrogate(std::string_view bytes, std::size_t index)
{
    if (index >= bytes.size() || static_cast<unsigned char>(bytes[index]) != 0xED)
        return {};
    return DecodeAfter({3, 0xD, 0xA0, 0xBF}, bytes, index);
}

void AppendUTF8(std::string& bytes, char32_t codePoint)
{
    if (codePoint > lastCodePoint)
        codePoint = replacementCharacter;
    if (codePoint < 0x80) {
        AppendByte(bytes, codePoint);
    } else if (codePoint < 0x800) {
        AppendByte(bytes, 0xC0 | (codePoint >> 6));
        AppendByte(bytes, 0x80 | (codePoint & 0x3F));
    } else if (codePoint < 0x10000) {
        AppendByte(bytes, 0xE0 | (codePoint >> 12));
        AppendByte(bytes, 0x80 | ((codePoint >> 6) & 0x3F));
        AppendByte(bytes, 0x80 | (codePoint & 0x3F));
    } else {
        AppendByte(bytes, 0xF0 | (codePoint >> 18));
        AppendByte(bytes, 0x80 | ((codePoint >> 12) & 0x3F));
        AppendByte(bytes, 0x80 | ((codePoint >> 6) & 0x3F));
        AppendByte(bytes, 0x80 | (codePoint & 0x3F));
    }
}

} // namespace zetcore::string::codec
