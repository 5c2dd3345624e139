#include "Frames.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace zetaudiofilterscan {

namespace {

using Length = std::uint32_t;

[[noreturn]] void ThrowTooLong(std::size_t length)
{
    throw std::length_error("a message of " + std::to_string(length) + " bytes is above the limit of " +
                            std::to_string(maxMessageBytes));
}

} // namespace

std::string MakeFrame(std::string_view message)
{
    if (message.size() > maxMessageBytes)
        ThrowTooLong(message.size());
    const auto length = static_cast<Length>(message.size());
    std::string frame(sizeof length, '\0');
    std::memcpy(frame.data(), &length, sizeof length);
    frame.append(message);
    return frame;
}

std::optional<std::string> FrameBuffer::Take()
{
    Length length = 0;
    if (buffer.size() - taken < sizeof length)
        return std::nullopt;
    std::memcpy(&length, buffer.data() + taken, sizeof length);
    if (length > maxMessageBytes)
        ThrowTooLong(length);
    if (buffer.size() - taken - sizeof length < length)
        return std::nullopt;
    std::string message = buffer.substr(taken + sizeof length, length);
    taken += sizeof length + length;
    if (taken == buffer.size()) {
        buffer.clear();
        taken = 0;
    } else if (taken > (buffer.size() / 2)) {
        buffer.erase(0, taken);
        taken = 0;
    }
    return message;
}

} // namespace zetaudiofilterscan
