#include "Frames.h"

#include <cstdint>
#include <cstring>
#include <stdexcept>

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

std::string HeaderOf(std::uint32_t length)
{
    std::string header(sizeof length, '\0');
    std::memcpy(header.data(), &length, sizeof length);
    return header;
}

TEST(Frames, ComesBackWholeHoweverItIsCut)
{
    const std::string message("a\0message", 9);
    const std::string frame = MakeFrame(message);
    for (std::size_t cut = 0; cut < frame.size(); ++cut) {
        FrameBuffer buffer;
        buffer.Append(std::string_view(frame).substr(0, cut));
        EXPECT_FALSE(buffer.Take()) << cut;
        buffer.Append(std::string_view(frame).substr(cut));
        EXPECT_EQ(buffer.Take(), message) << cut;
        EXPECT_FALSE(buffer.Take()) << cut;
    }
}

TEST(Frames, KeepsTheOrderOfManyMessagesThatComeAtOnce)
{
    FrameBuffer buffer;
    std::string bytes;
    for (int i = 0; i < 1000; ++i)
        bytes += MakeFrame(std::to_string(i));
    buffer.Append(bytes);
    for (int i = 0; i < 1000; ++i)
        EXPECT_EQ(buffer.Take(), std::to_string(i));
    EXPECT_FALSE(buffer.Take());
}

TEST(Frames, CarriesAnEmptyMessage)
{
    FrameBuffer buffer;
    buffer.Append(MakeFrame(""));
    EXPECT_EQ(buffer.Take(), "");
}

TEST(Frames, RefusesAnAnnouncedLengthAboveTheLimitBeforeTheMessageComes)
{
    FrameBuffer buffer;
    buffer.Append(HeaderOf(maxMessageBytes + 1));
    EXPECT_THROW(buffer.Take(), std::length_error);
}

TEST(Frames, CarriesAMessageAtTheLimitAndMakesNoneAboveIt)
{
    FrameBuffer buffer;
    buffer.Append(MakeFrame(std::string(maxMessageBytes, 'x')));
    EXPECT_EQ(buffer.Take()->size(), maxMessageBytes);
    EXPECT_THROW(MakeFrame(std::string(maxMessageBytes + 1, 'x')), std::length_error);
}

} // namespace
} // namespace zetaudiofilterscan
