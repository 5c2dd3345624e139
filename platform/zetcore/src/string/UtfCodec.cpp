#include "string/UtfCodec.h"

namespace zetcore::string::codec {

namespace {

/// Puts the bits of a lead byte and of its continuation bytes together.
Decoded Join(std::string_view sequence)
{
    constexpr unsigned leadBits[] = {0, 0x7F, 0x1F, 0x0F, 0x07};
    char32_t codePoint = static_cast<unsigned char>(sequence[0]) & leadBits[sequence.size()];
    for (const char byte : sequence.substr(1))
        codePoint = (codePoint << 6) | (static_cast<unsigned char>(byte) & 0x3Fu);
    return {codePoint, sequence.size()};
}

} // namespace

Decoded DecodeUTF8(std::string_view bytes, std::size_t index)
{
    const std::size_t length = UTF8Length(bytes, index);
    return length == 0 ? Decoded() : Join(bytes.substr(index, length));
}

Decoded DecodeSurrogate(std::string_view bytes, std::size_t index)
{
    constexpr std::size_t length = 3;
    if (index >= bytes.size() || bytes.size() - index < length)
        return {};
    const std::string_view sequence = bytes.substr(index, length);
    const bool isSurrogate = sequence[0] == '\xED' && IsUTF8Continuation(sequence[1]) &&
                             static_cast<unsigned char>(sequence[1]) >= 0xA0 &&
                             IsUTF8Continuation(sequence[2]);
    return isSurrogate ? Join(sequence) : Decoded();
}

} // namespace zetcore::string::codec
