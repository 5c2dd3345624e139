#include "FrameReader.h"

#include <algorithm>
#include <charconv>

namespace zettransport {

namespace {

constexpr std::string_view lineEnd = "\r\n";
constexpr std::string_view headerEnd = "\r\n\r\n";
constexpr std::string_view lengthName = "content-length";

char LowerAscii(char letter)
{
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
}

bool IsLengthName(std::string_view name)
{
    return std::equal(name.begin(), name.end(), lengthName.begin(), lengthName.end(),
                      [](char left, char right) { return LowerAscii(left) == right; });
}

std::string_view Trimmed(std::string_view text)
{
    const auto first = text.find_first_not_of(" \t");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t") - first + 1);
}

std::size_t ParseLength(std::string_view text, std::size_t limit)
{
    std::size_t length = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), length);
    const bool digitsOnly = !text.empty() && text.find_first_not_of("0123456789") == std::string_view::npos;
    if (!digitsOnly)
        throw FrameError("the frame's Content-Length is not a number");
    if (error != std::errc{} || length > limit)
        throw FrameError("a frame of " + std::string(text.substr(0, 24)) +
                         " bytes is larger than the limit of " + std::to_string(limit));
    return length;
}

} // namespace

std::size_t ContentLengthOf(std::string_view header, std::size_t limit)
{
    std::optional<std::size_t> length;
    while (!header.empty()) {
        const auto end = header.find(lineEnd);
        const std::string_view line = header.substr(0, end);
        header.remove_prefix(end == std::string_view::npos ? header.size() : end + lineEnd.size());
        const auto colon = line.find(':');
        if (colon == std::string_view::npos || colon == 0)
            throw FrameError("a line of the frame's header has no name and colon");
        if (!IsLengthName(line.substr(0, colon)))
            continue;
        if (length)
            throw FrameError("the frame's header has two Content-Length lines");
        length = ParseLength(Trimmed(line.substr(colon + 1)), limit);
    }
    if (!length)
        throw FrameError("the frame's header has no Content-Length");
    return *length;
}

std::string MakeFrame(std::string_view payload)
{
    std::string frame = "Content-Length: " + std::to_string(payload.size());
    frame.reserve(frame.size() + headerEnd.size() + payload.size());
    frame += headerEnd;
    frame += payload;
    return frame;
}

FrameReader::FrameReader(std::size_t headerLimit, std::size_t frameLimit)
    : maxHeaderBytes(headerLimit), maxFrameBytes(frameLimit)
{}

void FrameReader::Append(std::string_view bytes)
{
    // The rest moves to the front only now, and not after each frame. So a chunk of many frames takes
    // time in proportion to its length.
    if (begin > 0) {
        buffer.erase(0, begin);
        begin = 0;
    }
    buffer += bytes;
}

std::optional<std::string> FrameReader::Next()
{
    if (!bodyBytes && !ReadHeader())
        return std::nullopt;
    if (buffer.size() - begin < *bodyBytes)
        return std::nullopt;
    std::string frame = buffer.substr(begin, *bodyBytes);
    begin += *bodyBytes;
    bodyBytes.reset();
    return frame;
}

bool FrameReader::ReadHeader()
{
    const std::string_view rest =
        std::string_view(buffer).substr(begin).substr(0, maxHeaderBytes + headerEnd.size());
    const auto end = rest.find(headerEnd);
    if (end == std::string_view::npos) {
        if (rest.size() >= maxHeaderBytes + headerEnd.size())
            throw FrameError("the frame's header is longer than the limit of " +
                             std::to_string(maxHeaderBytes) + " bytes");
        return false;
    }
    bodyBytes = ContentLengthOf(rest.substr(0, end), maxFrameBytes);
    begin += end + headerEnd.size();
    return true;
}

} // namespace zettransport
