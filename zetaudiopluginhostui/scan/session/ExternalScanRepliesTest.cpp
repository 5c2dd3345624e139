// A session gets good replies, bad replies and none, and reads the result file.
#include <gmock/gmock.h>
#include <zetaudiofilterhost/PluginModuleInfoManager.h>
#include <zetmarshal/JsonValue.h>

#include "testing/ExternalScanStepsFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using zetaudiofilterhost::PluginModuleInfoManager;
using zetcore::serialization::Value;
using zetcore::serialization::ValuePtr;
using Access = ExternalAudioPluginScanAccess;
using ExternalScanReplies = ExternalScanStepsFixture;

TEST_F(ExternalScanReplies, TheResultFileIsReadUnderTheMutexAndOneThatCannotBeReadIsTracedAndPassedOver)
{
    std::filesystem::create_directory(ResultFile());
    std::filesystem::create_directory(ResultFile() / "so that it is not deleted");
    EXPECT_THROW(Start({a}), std::exception);
    std::filesystem::remove_all(ResultFile());

    ASSERT_TRUE(Start({a}));
    Begin();
    AnswerInfo(a, 0, 1);
    std::filesystem::create_directory(ResultFile());
    NoteTraces(ResultFile().string());
    TakeSteps();
    AnswerOk();
    EXPECT_THAT(TakeSteps(), ElementsAre("trace held", "send GetScanInfo free"));
    EXPECT_THAT(AllBanned(), IsEmpty());
    AnswerInfo(none, 1, 1, false);
    RunPosted();
    EXPECT_EQ(EndReports(), 1);
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
}

TEST_F(ExternalScanReplies, APreferencesFolderThatBecomesInaccessibleBansNobody)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 2);
    std::filesystem::rename(prefs, folder / "away");
    zettesting::WriteAll(prefs, "a file, so that nothing in the folder can be reached");
    AnswerOk();
    AnswerInfo(b, 1, 2);
    AnswerOk();
    EXPECT_THAT(Sent(), ElementsAre("Connect", "BeginScanForPlugins", "GetScanInfo", "ScanOneEntity",
                                    "GetScanInfo", "ScanOneEntity", "GetScanInfo"));
    EXPECT_THAT(AllBanned(), IsEmpty());
    std::filesystem::remove(prefs);
    std::filesystem::rename(folder / "away", prefs);
}

TEST_F(ExternalScanReplies, ForAMissingOrEmptyResultFileNothingIsPosted)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    for (const bool there : {false, true}) {
        AnswerInfo(a, 0, 2);
        if (there)
            zettesting::WriteAll(ResultFile(), "");
        TakeSteps();
        AnswerOk();
        EXPECT_THAT(TakeSteps(), ElementsAre("send GetScanInfo free"));
    }
}

TEST_F(ExternalScanReplies, WhatWasFoundJoinsTheRegistryOnTheMainThreadWithItsBytesUnchanged)
{
    ASSERT_TRUE(Start({a}));
    Begin();
    AnswerInfo(a, 0, 1);
    std::string text = Result(a, L"Big@Reverb").substr(sizeof "result");
    const auto mark = text.find('@');
    ASSERT_NE(mark, std::string::npos);
    // In XML, a line end within an attribute is a blank.
    text[mark] = '\r';
    zettesting::WriteAll(ResultFile(), text);
    AnswerOk();
    EXPECT_EQ(PluginModuleInfoManager::GetInstance()->Find(a), nullptr);
    RunPosted();
    const auto info = PluginModuleInfoManager::GetInstance()->Find(a);
    ASSERT_NE(info, nullptr);
    EXPECT_EQ(info->GetName(), L"Big Reverb");
    // The file stays. The next result replaces it.
    EXPECT_TRUE(std::filesystem::exists(ResultFile()));
}

TEST_F(ExternalScanReplies, AnErrorReplyToAnyRequestIsOnlyTracedAndForbidsNoRestart)
{
    for (int good = 0; good < 4; ++good) {
        SCOPED_TRACE(good);
        ASSERT_TRUE(Start({a, b}));
        for (int reply = 0; reply < good; ++reply)
            reply == 2 ? AnswerInfo(a, 0, 2) : AnswerOk();
        NoteTraces("OnServerFailed()");
        TakeSteps();
        connection->Last().onError(-32001, L"refused", 1);
        EXPECT_THAT(TakeSteps(), ElementsAre("trace free"));
        RunPosted();
        EXPECT_EQ(EndReports(), good);
        const int before = Launches();
        connection->LoseScanner();
        RunPosted();
        EXPECT_EQ(Launches(), before + 1);
        EXPECT_THAT(AllBanned().size(), good == 3 ? 1u : 0u);
        scan->StopScan();
        for (int number = 1; number <= 2; ++number)
            Script(Launches() + number, {"word 4711", "wait end"});
    }
}

TEST_F(ExternalScanReplies, RepliesWithoutAValueAreAsGoodAsAnyWhereNoneIsExpected)
{
    for (const ValuePtr& nothing : {ValuePtr(), std::make_shared<Value>()}) {
        connection->requests.clear();
        ASSERT_TRUE(Start({a}));
        Answer(nothing);
        Answer(nothing);
        AnswerInfo(a, 0, 1);
        Answer(nothing);
        EXPECT_THAT(Sent(), ElementsAre("Connect", "BeginScanForPlugins", "GetScanInfo", "ScanOneEntity",
                                        "GetScanInfo"));
        scan->StopScan();
    }
}

TEST_F(ExternalScanReplies, ABadRecordsErrorLeavesTheHandlerAndChangesNothing)
{
    ASSERT_TRUE(Start({a}));
    Begin();
    NoteTraces("OnScanInfo");
    TakeSteps();
    for (const ValuePtr& bad : {ValuePtr(), std::make_shared<Value>(), zetmarshal::FromJson("[]")})
        EXPECT_THROW(Answer(bad), std::bad_any_cast);
    EXPECT_THROW(AnswerOk(), zetcore::serialization::missing_key_exception);
    EXPECT_THAT(TakeSteps(), ElementsAre("trace free", "trace free", "trace free", "trace free"));
    EXPECT_FALSE(Access::MutexIsHeld(*scan));
    AnswerInfo(a, 0, 1);
    EXPECT_EQ(LastReport(), "a.so 0/1");
}

TEST_F(ExternalScanReplies, TheTotalIsTakenUntilThereIsOne)
{
    ASSERT_TRUE(Start({a, b}));
    Begin();
    AnswerInfo(a, 0, 0);
    EXPECT_EQ(LastReport(), "a.so 0/0");
    AnswerOk();
    AnswerInfo(b, 1, 7);
    EXPECT_EQ(LastReport(), "b.so 1/7");
    AnswerOk();
    AnswerInfo(b, 2, 9);
    EXPECT_EQ(LastReport(), "b.so 2/7");
}

} // namespace
} // namespace zetaudiopluginhostui
