#include "FrameReader.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>

namespace zettransport {

namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

constexpr std::size_t headerLimit = 64;
constexpr std::size_t frameLimit = 1000;

/// Returns the frames of all chunks. An error ends the list as "! message".
std::vector<std::string> FramesOf(const std::vector<std::string>& chunks)
{
    std::vector<std::string> frames;
    FrameReader reader(headerLimit, frameLimit);
    try {
        for (const std::string& chunk : chunks) {
            reader.Append(chunk);
            while (auto frame = reader.Next())
                frames.push_back(*frame);
        }
    } catch (const FrameError& error) {
        frames.push_back("! " + std::string(error.what()));
    }
    return frames;
}

TEST(FrameReader, ReadsWhatMakeFrameWrites)
{
    EXPECT_EQ(MakeFrame("{}"), "Content-Length: 2\r\n\r\n{}");
    EXPECT_THAT(FramesOf({MakeFrame("{}")}), ElementsAre("{}"));
}

TEST(FrameReader, ReadsTwoFramesSplitAtAnyByte)
{
    const std::string bytes = MakeFrame("first") + MakeFrame("second \r\n\r\n one");
    for (std::size_t split = 0; split <= bytes.size(); ++split)
        EXPECT_THAT(FramesOf({bytes.substr(0, split), bytes.substr(split)}),
                    ElementsAre("first", "second \r\n\r\n one"))
            << split;
}

TEST(FrameReader, ReadsFramesThatArriveByteByByte)
{
    std::vector<std::string> chunks;
    for (const char byte : MakeFrame("first") + MakeFrame("") + MakeFrame("third"))
        chunks.emplace_back(1, byte);
    EXPECT_THAT(FramesOf(chunks), ElementsAre("first", "", "third"));
}

TEST(FrameReader, ReadsManyFramesInOneChunk)
{
    std::string bytes;
    for (int i = 0; i < 500; ++i)
        bytes += MakeFrame(std::to_string(i));
    const auto frames = FramesOf({bytes});
    ASSERT_EQ(frames.size(), 500u);
    EXPECT_EQ(frames[499], "499");
}

TEST(FrameReader, ComparesHeaderNamesWithoutLetterCaseAndIgnoresOthers)
{
    EXPECT_THAT(FramesOf({"Content-Type: x\r\ncONTENT-lENGTH:3\r\nX: \r\n\r\nabc"}), ElementsAre("abc"));
    EXPECT_THAT(FramesOf({"Content-Length: \t 3 \r\n\r\nabc"}), ElementsAre("abc"));
}

TEST(FrameReader, RefusesBadHeaders)
{
    const std::vector<std::pair<std::string, std::string>> cases = {
        {"garbage\r\n\r\n", "no name and colon"},
        {": 3\r\n\r\n", "no name and colon"},
        {"\r\n\r\n", "no Content-Length"},
        {"Content-Type: 3\r\n\r\n", "no Content-Length"},
        {"Content-Length : 3\r\n\r\n", "no Content-Length"},
        {"Content-Length:\r\n\r\n", "not a number"},
        {"Content-Length: -1\r\n\r\n", "not a number"},
        {"Content-Length: +1\r\n\r\n", "not a number"},
        {"Content-Length: 1x\r\n\r\n", "not a number"},
        {"Content-Length: 0x10\r\n\r\n", "not a number"},
        {"Content-Length: 1 2\r\n\r\n", "not a number"},
        {"Content-Length: 3\r\nContent-Length: 3\r\n\r\n", "two Content-Length"},
        {"Content-Length: 1001\r\n\r\n", "1001 bytes is larger than the limit of 1000"},
        {"Content-Length: 4294967296\r\n\r\n", "4294967296 bytes is larger"},
        {"Content-Length: 18446744073709551617\r\n\r\n", "larger"},
        {"Content-Length: 3\n\nabc" + std::string(headerLimit, ' '), "longer than the limit"},
        {std::string(headerLimit + 4, 'x'), "longer than the limit of 64"},
    };
    for (const auto& [bytes, message] : cases)
        EXPECT_THAT(FramesOf({bytes}), ElementsAre(HasSubstr(message))) << bytes;
}

TEST(FrameReader, DeliversTheFramesBeforeABadOne)
{
    EXPECT_THAT(FramesOf({MakeFrame("good") + "bad\r\n\r\n" + MakeFrame("unreachable")}),
                ElementsAre("good", HasSubstr("no name and colon")));
}

TEST(FrameReader, TakesHeadersAndFramesAsLargeAsTheirLimits)
{
    const std::string length = "Content-Length: 1000\r\nX: ";
    const std::string header = length + std::string(headerLimit - length.size(), 'x');
    const std::string body(frameLimit, 'b');
    EXPECT_THAT(FramesOf({header + "\r\n\r\n" + body}), ElementsAre(body));
    EXPECT_THAT(FramesOf({header + "x\r\n\r\n" + body}), ElementsAre(HasSubstr("longer than the limit")));
}

} // namespace

} // namespace zettransport
