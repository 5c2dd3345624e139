#include <zetaudiopluginhost/PluginFailure.h>

#include <set>

#include <gmock/gmock.h>
#include <zetaudiopluginhost/BannedPluginManager.h>

namespace zetaudiopluginhost {
namespace {

using testing::HasSubstr;
using testing::Not;
using zetcore::config::Localizer;
using Kind = PluginFailure::Kind;

struct Case
{
    PluginFailure failure;
    const char* words;
};

TEST(PluginFailure, SaysWhatHappenedAndWhen)
{
    using std::chrono::milliseconds;
    const Case cases[] = {
        {{}, "misbehaved while being scanned"},
        {{.phase = ScanPhase::Close}, "misbehaved while being closed"},
        {{.kind = Kind::Exited, .phase = ScanPhase::Entry},
         "ended the process (exit code 0) in its entry function"},
        {{.kind = Kind::Exited, .code = -1}, "ended the process (exit code -1) while being scanned"},
        {{.kind = Kind::TookTooMuchMemory, .phase = ScanPhase::Load, .details = {"512"}},
         "took more than 512 MB of memory"},
        {{.kind = Kind::TookTooLong, .phase = ScanPhase::Create, .limit = milliseconds(60000)},
         "took longer than 60 seconds while a component was being created"},
        {{.kind = Kind::TookTooLong, .phase = ScanPhase::Open, .limit = milliseconds(1000)},
         "took longer than 1 second while being opened"},
        {{.kind = Kind::TookTooLong, .phase = ScanPhase::Start, .limit = milliseconds(250)},
         "took longer than 0.25 seconds while being started and stopped"},
        {{.kind = Kind::TookTooLong, .phase = ScanPhase::Unload, .limit = milliseconds(2005)},
         "took longer than 2.005 seconds while being unloaded"},
        {{.kind = Kind::ChannelLost, .phase = ScanPhase::Unload},
         "closed files of the process that had loaded it"},
        {{.kind = Kind::WrongAnswer, .details = {"cut off: phase"}},
         "damaged the process that had loaded it (cut off: phase)"},
        {{.kind = Kind::CouldNotLoad, .phase = ScanPhase::Load, .details = {"no libmissing.so"}},
         "could not be loaded: no libmissing.so"},
        {{.kind = Kind::Threw, .phase = ScanPhase::Query}, "threw an exception while being asked what it is"},
        {{.kind = Kind::Threw, .phase = ScanPhase::Load, .details = {"gave up"}},
         "threw an exception (gave up) while being loaded"},
        {{.kind = Kind::PluginsOfUnknownVersion, .details = {"2", "5", "3", "9.0.0"}},
         "2 of its 5 plug-ins cannot be used: number 3 is described in version 9.0.0 of CLAP, which this "
         "system does not know"},
    };
    for (const Case& each : cases)
        EXPECT_EQ(WordFailures({each.failure}), each.words);
}

TEST(PluginFailure, EndsWithTheLastOutputOnOneLine)
{
    EXPECT_EQ(WordFailures({{.kind = Kind::EntryRefused, .lastOutput = " please\nwait "}}),
              "its entry function refused; its last output: please wait");
    const std::string words = WordFailures(
        {{.kind = Kind::Threw, .details = {std::string(2000, 'x')}, .lastOutput = std::string(2000, 'y')}});
    EXPECT_LT(words.size(), 700u);
}

TEST(PluginFailure, OfAFlakyPluginTellsBothOutcomes)
{
    EXPECT_EQ(WordFailures({{.kind = Kind::Exited, .phase = ScanPhase::Load, .code = 3, .lastOutput = "no"},
                            {.kind = Kind::Misbehaved, .phase = ScanPhase::Close}}),
              "is flaky: it ended the process (exit code 3) while being loaded; its last output: no; tried "
              "alone, it passed; tried once more, it misbehaved while being closed");
    EXPECT_EQ(WordFailures({}), "");
}

TEST(PluginFailure, EveryKindHasWordsOfItsOwn)
{
    std::set<std::string> all;
    for (int kind = 0; kind <= static_cast<int>(PluginFailure::lastKind); ++kind) {
        const std::string words = WordFailures(
            {{.kind = static_cast<Kind>(kind), .details = {"first", "second", "third", "fourth"}}});
        EXPECT_TRUE(all.insert(words).second) << words;
        EXPECT_THAT(words, Not(HasSubstr("@"))) << kind;
    }
}

TEST(PluginFailure, IsWordedInTheLanguageOfTheTable)
{
    Localizer german;
    german.LoadTableFromText("\"$$$/AudioPluginManager/BanReason/TookTooLong\"=\"brauchte @1 mehr als @0\"\n"
                             "\"$$$/AudioPluginManager/BanReason/Seconds\"=\"@0 Sekunden\"\n"
                             "\"$$$/AudioPluginManager/BanPhase/Load\"=\"beim Laden\"\n",
                             "de");
    const BanInfo ban =
        BanFor({{.kind = Kind::TookTooLong, .phase = ScanPhase::Load, .limit = std::chrono::seconds(60)}});
    EXPECT_EQ(WordReason(ban, german), "brauchte beim Laden mehr als 60 Sekunden");
    EXPECT_EQ(ban.reason, "took longer than 60 seconds while being loaded")
        << "the file's words stay English";
}

TEST(PluginFailure, EachPartIsWordedInTheLanguageOfTheTable)
{
    Localizer german;
    german.LoadTableFromText("\"$$$/AudioPluginManager/BanReason/Crashed\"=\"abgestürzt (@0) @1\"\n"
                             "\"$$$/AudioPluginManager/BanReason/LastOutput\"=\"@0, zuletzt: @1\"\n"
                             "\"$$$/AudioPluginManager/BanReason/Flaky\"=\"mal @0, mal @1\"\n"
                             "\"$$$/AudioPluginManager/Crash/Signal\"=\"Zeichen @0\"\n"
                             "\"$$$/AudioPluginManager/Crash/Exception\"=\"Zeichen @0\"\n"
                             "\"$$$/AudioPluginManager/BanPhase/Load\"=\"beim Laden\"\n",
                             "de");
    constexpr std::int64_t unheardOf = 12345;
    const PluginFailure crash{
        .kind = Kind::Crashed, .phase = ScanPhase::Load, .code = unheardOf, .lastOutput = "warm"};
    const std::string once = WordFailures({crash}, german);
    EXPECT_TRUE(once.starts_with("abgestürzt (Zeichen ")) << once;
    EXPECT_TRUE(once.ends_with(") beim Laden, zuletzt: warm")) << once;
    EXPECT_EQ(WordFailures({crash, crash}, german), "mal " + once + ", mal " + once);
}

TEST(PluginFailure, WordsWithoutFactsStandAsTheyAre)
{
    EXPECT_EQ(WordReason({"sounds bad"}, Localizer::Get()), "sounds bad");
    EXPECT_EQ(WordReason({}, Localizer::Get()), "");
}

} // namespace
} // namespace zetaudiopluginhost
