#include <zetcore/debug/DeferredTrace.h>
#include <zetcore/debug/ResetTrace.h>
#include <zetcore/debug/Trace.h>

#include <thread>

#include <gmock/gmock.h>
#include <zetcore/filesupport/paths/FileException.h>
#include <zettesting/HostFixture.h>

#include "debug/TraceConfiguration.h"

namespace zetcore::debug {
namespace {

using ::testing::ElementsAre;
using zettesting::ReadAll;
using zettesting::ScopedEnvironment;
using zettesting::ToWide;

class TraceTest : public zettesting::HostFixture
{};

TEST_F(TraceTest, NothingIsTracedByDefault)
{
    EXPECT_EQ(GetMasterTraceVolume(), 0);
    EXPECT_FALSE(TraceEnabled("Any", 1, true));
    EXPECT_FALSE(TraceEnabled("Any", 0, true));
    TraceLine(1, "Any", "text");
    EXPECT_TRUE(traceLines->empty());
}

TEST_F(TraceTest, LinesUpToTheVolumeAreTraced)
{
    SetMasterTraceVolume(6);
    EXPECT_EQ(GetMasterTraceVolume(), 6);
    EXPECT_TRUE(TraceEnabled("Any", 6, true));
    EXPECT_FALSE(TraceEnabled("Any", 7, true));
    TraceLine(6, "Any", "six");
    TraceLine(7, "Any", "seven");
    EXPECT_THAT(*traceLines, ElementsAre("6 Any six\r\n"));
}

TEST_F(TraceTest, TheVolumeStaysBetweenZeroAndNine)
{
    SetMasterTraceVolume(-3);
    EXPECT_EQ(GetMasterTraceVolume(), 0);
    SetMasterTraceVolume(1000);
    EXPECT_EQ(GetMasterTraceVolume(), 9);
}

TEST_F(TraceTest, ACategoryIsAsItWasConfiguredElseAsTheCallerSays)
{
    SetMasterTraceVolume(9);
    EXPECT_TRUE(TraceEnabled("Scan", 6, true));
    EXPECT_FALSE(TraceEnabled("Scan", 6, false));
    SetTraceCategoryEnabled("Scan", false);
    EXPECT_FALSE(TraceEnabled("Scan", 6, true));
    SetTraceCategoryEnabled("Scan", true);
    EXPECT_TRUE(TraceEnabled("Scan", 6, false));
    EXPECT_TRUE(TraceEnabled("Other", 6, true));
}

TEST_F(TraceTest, TextIsWrittenAsItIsWithoutBeingAsked)
{
    SetTraceCategoryEnabled("Scan", false);
    Trace(6, "Scan", "as it is");
    EXPECT_THAT(*traceLines, ElementsAre("6 Scan as it is"));
}

TEST_F(TraceTest, EveryChangeOfTheConfigurationMovesTheCount)
{
    int count = TraceChangeCount();
    const auto moved = [&] { return std::exchange(count, TraceChangeCount()) != count; };
    EXPECT_FALSE(moved());
    SetMasterTraceVolume(3);
    EXPECT_TRUE(moved());
    SetTraceCategoryEnabled("Scan", false);
    EXPECT_TRUE(moved());
    SetTraceFile({});
    EXPECT_TRUE(moved());
    SetTraceSink([](int, std::string_view, std::string_view) {});
    EXPECT_TRUE(moved());
    ResetTrace();
    EXPECT_TRUE(moved());
    Trace(1, "Scan", "");
    EXPECT_FALSE(moved());
}

TEST_F(TraceTest, LinesGoToTheFileAfterTheOnesThatAreThere)
{
    SetTraceSink({});
    zettesting::WriteAll(folder / "trace.txt", "before\n");
    SetTraceFile(ToWide(folder / "trace.txt"));
    Trace(1, "Scan", "one\r\n");
    Trace(1, "Scan", "two\r\n");
    EXPECT_EQ(ReadAll(folder / "trace.txt"), "before\none\r\ntwo\r\n");
}

TEST_F(TraceTest, AFileThatCannotBeOpenedLeavesTheOldOne)
{
    SetTraceSink({});
    SetTraceFile(ToWide(folder / "trace.txt"));
    EXPECT_THROW(SetTraceFile(folder.Wide()), filesupport::file_exception);
    Trace(1, "Scan", "one");
    EXPECT_EQ(ReadAll(folder / "trace.txt"), "one");
}

TEST_F(TraceTest, WithoutAFileLinesGoToStandardError)
{
    SetTraceSink({});
    testing::internal::CaptureStderr();
    Trace(1, "Scan", "to the terminal\r\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "to the terminal\r\n");
}

TEST_F(TraceTest, ASinkThatThrowsDisturbsNobody)
{
    SetTraceSink([](int, std::string_view, std::string_view) { throw std::runtime_error("sink"); });
    EXPECT_NO_THROW(Trace(1, "Scan", "text"));
}

TEST_F(TraceTest, WhatIsDeferredIsWrittenInOrderWhenTheOutermostGoes)
{
    SetMasterTraceVolume(1);
    {
        const DeferredTrace outer;
        TraceLine(1, "Scan", "one");
        {
            const DeferredTrace inner;
            TraceLine(1, "Scan", "two");
        }
        std::thread([] { TraceLine(1, "Scan", "another thread's"); }).join();
        TraceLine(2, "Scan", "too quiet");
        EXPECT_EQ(traceLines->size(), 1u);
    }
    EXPECT_EQ(*traceLines,
              (std::vector<std::string>{"1 Scan another thread's\r\n", "1 Scan one\r\n", "1 Scan two\r\n"}));
}

TEST_F(TraceTest, ASinkMayTraceAndReplaceItself)
{
    std::vector<std::string> lines;
    SetMasterTraceVolume(1);
    SetTraceSink([&lines](int, std::string_view, std::string_view text) {
        lines.emplace_back(text);
        if (lines.size() < 3)
            TraceLine(1, "Sink", "from the sink");
        else
            SetTraceSink([](int, std::string_view, std::string_view) {});
    });
    TraceLine(1, "Scan", "text");
    EXPECT_EQ(lines, (std::vector<std::string>{"text\r\n", "from the sink\r\n", "from the sink\r\n"}));
    TraceLine(1, "Scan", "to the other");
    EXPECT_EQ(lines.size(), 3u);
}

TEST_F(TraceTest, TheEnvironmentConfiguresTheProgramAtFirstUse)
{
    const ScopedEnvironment variable("ZET_TRACE", "volume=4;file=" + (folder / "env.txt").string() +
                                                      ";off=Noise, Chatter");
    ResetTrace();
    EXPECT_EQ(GetMasterTraceVolume(), 4);
    EXPECT_FALSE(TraceEnabled("Noise", 1, true));
    EXPECT_FALSE(TraceEnabled("Chatter", 1, true));
    TraceLine(4, "Scan", "text");
    EXPECT_EQ(ReadAll(folder / "env.txt"), "text\r\n");
}

TEST_F(TraceTest, WhatTheProgramSetsGoesBeforeTheEnvironment)
{
    const ScopedEnvironment variable("ZET_TRACE", "volume=4");
    ResetTrace();
    SetMasterTraceVolume(2);
    EXPECT_EQ(GetMasterTraceVolume(), 2);
}

TEST_F(TraceTest, MistakesInTheEnvironmentAreToldAndTheRestCounts)
{
    const ScopedEnvironment variable("ZET_TRACE", "loud;file=" + folder.Path().string() + ";volume=3");
    ResetTrace();
    testing::internal::CaptureStderr();
    EXPECT_EQ(GetMasterTraceVolume(), 3);
    const std::string told = testing::internal::GetCapturedStderr();
    EXPECT_THAT(told, ::testing::HasSubstr("\"loud\""));
    EXPECT_THAT(told, ::testing::HasSubstr(folder.Path().string()));
}

TEST_F(TraceTest, LinesOfSeveralThreadsStayWhole)
{
    SetTraceSink({});
    SetTraceFile(ToWide(folder / "trace.txt"));
    SetMasterTraceVolume(9);
    std::vector<std::thread> threads;
    for (char letter = 'a'; letter < 'e'; ++letter)
        threads.emplace_back([letter] {
            for (int line = 0; line < 200; ++line)
                TraceLine(9, "Scan", std::string(50, letter));
        });
    for (int change = 0; change < 50; ++change)
        SetTraceCategoryEnabled("Other", change % 2 == 0);
    for (std::thread& thread : threads)
        thread.join();
    const std::string content = ReadAll(folder / "trace.txt");
    ASSERT_EQ(content.size(), 4u * 200 * 52);
    for (std::size_t at = 0; at < content.size(); at += 52)
        ASSERT_EQ(content.substr(at, 52), std::string(50, content[at]) + "\r\n");
}

TEST(TraceConfiguration, AnyPartMayBeLeftOut)
{
    const TraceConfiguration empty = ParseTraceConfiguration("");
    EXPECT_FALSE(empty.volume);
    EXPECT_TRUE(empty.file.empty() && empty.off.empty() && empty.problems.empty());
    const TraceConfiguration all = ParseTraceConfiguration("off=A,B; file=/tmp/a=b ;volume=9;");
    EXPECT_EQ(all.volume, 9);
    EXPECT_EQ(all.file, "/tmp/a=b");
    EXPECT_THAT(all.off, ElementsAre("A", "B"));
    EXPECT_TRUE(all.problems.empty());
}

TEST(TraceConfiguration, EachMistakeIsAProblemOfItsOwn)
{
    for (const char* text : {"volume=ten", "volume=10", "volume=-1", "volume=", "volume=3x", "colour=red",
                             "on", "=x", "volume=99999999999999999999"}) {
        const TraceConfiguration configuration = ParseTraceConfiguration(text);
        EXPECT_EQ(configuration.problems.size(), 1u) << text;
        EXPECT_FALSE(configuration.volume) << text;
    }
}

} // namespace
} // namespace zetcore::debug
