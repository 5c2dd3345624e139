// A scan must survive a scanner that is broken, or that is not ours.
#include <gmock/gmock.h>
#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetaudiopluginhostui/ScanLimits.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/debug/Trace.h>

#include "testing/ExternalScanFixture.h"

namespace zetaudiopluginhostui {
namespace {

using ::testing::ElementsAre;
using zetaudiopluginhost::BannedPluginManager;

struct Hostile
{
    const char* name;
    /// The line of a script that answers GetScanInfo.
    std::string answer;
    /// The trace must hold this.
    std::string traced;
};

void PrintTo(const Hostile& hostile, std::ostream* stream)
{
    *stream << hostile.name << ": " << hostile.answer.substr(0, 100);
}

std::string Record(const std::string& key, const std::string& value)
{
    std::string record;
    for (const auto& [field, good] : {std::pair<std::string, std::string>{"locator", "\"VST|/v/a.so|\""},
                                      {"subcomponent", "\"\""},
                                      {"progress", "0"},
                                      {"total", "1"},
                                      {"continue", "true"}})
        if (field != key || !value.empty())
            record += (record.empty() ? "\"" : ",\"") + field + "\":" + (field == key ? value : good);
    return "reply {\"value\":{" + record + "}}";
}

std::vector<Hostile> WrongFields()
{
    std::vector<Hostile> all;
    for (const char* key : {"locator", "subcomponent", "progress", "total", "continue"}) {
        all.push_back({key, Record(key, ""), "Missing key \"" + std::string(key) + "\""});
        for (const char* value : {"null", "[]", "{\"a\":1}", "1.5", "1e300"})
            all.push_back({key, Record(key, value), "\"" + std::string(key) + "\" of GetScanInfo's reply"});
    }
    for (const char* key : {"locator", "subcomponent", "continue"})
        all.push_back({key, Record(key, "7"), "\"" + std::string(key) + "\" of GetScanInfo's reply"});
    for (const char* key : {"progress", "total", "continue"})
        all.push_back({key, Record(key, "\"text\""), "\"" + std::string(key) + "\" of GetScanInfo's reply"});
    return all;
}

std::vector<Hostile> WrongShapes()
{
    const std::string frame = "bytes Content-Length: ";
    return {
        {"array", "reply []", "\"result\" of GetScanInfo's reply"},
        {"null", "reply null", "\"result\" of GetScanInfo's reply"},
        {"no value", "reply {}", "Missing key \"value\""},
        {"value is an array", "reply {\"value\":[]}", "\"value\" of GetScanInfo's reply"},
        {"value is null", "reply {\"value\":null}", "\"value\" of GetScanInfo's reply"},
        {"number out of range", Record("progress", "1e999"), "a number is out of range"},
        {"deep nesting", "nested 100000", "nested deeper than 64"},
        {"garbage", "bytes garbage\\r\\n\\r\\n", "no name and colon"},
        {"garbage without end", "bytes " + std::string(5000, 'x'), "longer than the limit of 4096"},
        {"4 GiB", frame + "4294967296\\r\\n\\r\\n{", "4294967296 bytes is larger than the limit"},
        {"16 EiB", frame + "18446744073709551617\\r\\n\\r\\n{", "is larger than the limit"},
        {"negative length", frame + "-1\\r\\n\\r\\n", "not a number"},
        {"two lengths", frame + "2\\r\\nContent-Length: 2\\r\\n\\r\\n{}", "two Content-Length"},
        {"no JSON", "message hello", "no good JSON"},
        {"empty frame", "message ", "no good JSON"},
        {"other version", "message {\"jsonrpc\":\"1.0\",\"id\":@id,\"result\":{}}",
         "\"jsonrpc\" is not \"2.0\""},
        {"batch", "message [{\"jsonrpc\":\"2.0\",\"id\":@id,\"result\":{}}]", "a batch"},
        {"result and error",
         "message {\"jsonrpc\":\"2.0\",\"id\":@id,\"result\":{},\"error\":{\"code\":1,\"message\":\"\"}}",
         "either a result or an error"},
        {"error without a code", "message {\"jsonrpc\":\"2.0\",\"id\":@id,\"error\":{\"message\":\"m\"}}",
         "without a code"},
        {"unknown id", "message {\"jsonrpc\":\"2.0\",\"id\":99,\"result\":{}}", "never sent"},
        {"id of another type", "message {\"jsonrpc\":\"2.0\",\"id\":\"@id\",\"result\":{}}", "never sent"},
        {"error for nobody",
         "message {\"jsonrpc\":\"2.0\",\"id\":null,\"error\":{\"code\":-32700,\"message\":\"what?\"}}",
         "never sent: what?"},
    };
}

class ExternalScanHostile : public ExternalScanFixture
{
  protected:
    void SetUp() override { zetcore::debug::SetMasterTraceVolume(6); }

    static bool AnyBanned()
    {
        return BannedPluginManager::GetInstance()->BannedBegin() !=
               BannedPluginManager::GetInstance()->BannedEnd();
    }
    static void AllowFruitlessRestarts(const char* number)
    {
        zetcore::debug::DebugDatabase::Instance().SetEntry(restartLimitKey, number);
    }

    const PluginLocator none{};
    const PluginLocator a = Plugin("a.so");
    const PluginLocator b = Plugin("b.so");
};

class ExternalScanAnswer : public ExternalScanHostile, public ::testing::WithParamInterface<Hostile>
{};

TEST_P(ExternalScanAnswer, IsTracedAndTheScanGoesOnInANewScanner)
{
    Script(1, {"listen-raw", "ok", "ok", GetParam().answer});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_TRUE(AnyTraced(GetParam().traced)) << ::testing::PrintToString(Traced());
    EXPECT_FALSE(AnyBanned());
    EXPECT_EQ(Launches(), 2);
    scan->StopScan();
    EXPECT_TRUE(ScannersEnd());
}

std::string NameOf(const ::testing::TestParamInfo<Hostile>& test)
{
    std::string name;
    bool begins = true;
    for (const char letter : std::string_view(test.param.name)) {
        if (letter != ' ')
            name += begins && letter >= 'a' && letter <= 'z' ? static_cast<char>(letter - 'a' + 'A') : letter;
        begins = letter == ' ';
    }
    return name + std::to_string(test.index);
}

INSTANTIATE_TEST_SUITE_P(WrongField, ExternalScanAnswer, ::testing::ValuesIn(WrongFields()), NameOf);
INSTANTIATE_TEST_SUITE_P(WrongShape, ExternalScanAnswer, ::testing::ValuesIn(WrongShapes()), NameOf);

TEST_F(ExternalScanHostile, FramesThatArriveAByteAtATimeAreRead)
{
    const std::string last = Info(none, 1, 1, false).substr(sizeof "reply");
    const std::string first = Info(a, 0, 1, true).substr(sizeof "reply");
    Script(1, {"listen-raw", "slow {}", "slow {}", "slow " + first, "slow {}", "slow " + last});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_EQ(reports.size(), 2u);
    EXPECT_EQ(Launches(), 1);
}

TEST_F(ExternalScanHostile, RepliesThatComeTwiceCountOnce)
{
    const std::string last = Info(none, 2, 2, false).substr(sizeof "reply");
    Script(1,
           {"listen-raw", "twice {}", "twice {}", "twice " + Info(a, 0, 2, true).substr(sizeof "reply"),
            "twice {}", "twice " + Info(b, 1, 2, true).substr(sizeof "reply"), "twice {}", "twice " + last});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(reports.size(), 3u);
    EXPECT_EQ(Launches(), 1);
    EXPECT_TRUE(AnyTraced("not pending any more"));
}

TEST_F(ExternalScanHostile, AReplyThatComesTooEarlyEndsTheSession)
{
    // This is the id of the next request.
    Script(1, {"listen-raw", "ok", "message {\"jsonrpc\":\"2.0\",\"id\":3,\"result\":{}}"});
    Script(2, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_TRUE(AnyTraced("never sent"));
    EXPECT_EQ(Launches(), 2);
}

TEST_F(ExternalScanHostile, HugeNumbersAreNarrowedAndTheScanGoesOn)
{
    Script(1, {"listen-raw", "ok", "ok",
               "reply {\"value\":{\"locator\":" + Quoted(a) +
                   ",\"subcomponent\":\"\",\"progress\":18446744073709551615,\"total\":4294967297,"
                   "\"continue\":true}}",
               "wait seen", "ok", Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a}));
    RunUntil([&] { return reports.size() == 1; });
    Touch("seen");
    RunUntilEnd();
    EXPECT_THAT(reports, ElementsAre("a.so -1/1", endReport));
    EXPECT_EQ(Launches(), 1);
}

TEST_F(ExternalScanHostile, AScannerThatNeverGetsOnEndsTheScanWhenTheHostHasSetALimit)
{
    AllowFruitlessRestarts("3");
    for (int number = 1; number <= 6; ++number)
        Script(number, {"listen-raw", "ok", "ok", "reply []"});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(Launches(), 4);
    EXPECT_TRUE(scan->WhyGaveUp());
    const std::string why = "The scanner was restarted 3 times without getting on; plug-ins not scanned: 2";
    EXPECT_THAT(scan->WhyGaveUp(), ::testing::Optional(::testing::StartsWith(why)));
    EXPECT_TRUE(AnyTraced(why));
    EXPECT_FALSE(AnyBanned());
    scan->StopScan();
    EXPECT_EQ(EndReports(), 1);
    EXPECT_TRUE(ScannersEnd());
}

TEST_F(ExternalScanHostile, EveryPluginThatIsReportedBeginsTheCountAnew)
{
    AllowFruitlessRestarts("2");
    Script(1, {"listen", "ok", "die"});
    Script(2, {"listen", "ok", "ok", Info(a, 0, 2, true), "die"});
    Script(3, {"listen", "ok", "die"});
    Script(4, {"listen", "ok", "ok", Info(b, 0, 1, true), "ok", Info(none, 1, 1, false)});
    ASSERT_TRUE(Start({a, b}));
    RunUntilEnd();
    EXPECT_EQ(Launches(), 4);
    EXPECT_FALSE(scan->WhyGaveUp());
}

TEST_F(ExternalScanHostile, WithoutALimitEveryScannerThatFailsIsReplaced)
{
    constexpr int failing = 25;
    for (int number = 1; number <= failing; ++number)
        Script(number, {"listen", "die"});
    Script(failing + 1, {"listen", "ok", "ok", Info(none, 0, 0, false)});
    ASSERT_TRUE(Start({a}));
    RunUntilEnd();
    EXPECT_EQ(Launches(), failing + 1);
    EXPECT_FALSE(scan->WhyGaveUp());
}

} // namespace
} // namespace zetaudiopluginhostui
