#include "banned/FailureElement.h"

#include <gmock/gmock.h>

#include "banned/BanListFile.h"

namespace zetaudiopluginhost {
namespace {

using testing::HasSubstr;
using testing::Not;
using zetaudiofilterhost::PluginLocator;
using Kind = PluginFailure::Kind;

constexpr char rootName[] = "bannedplugins";

std::string FileWith(const std::string& attributes, const std::string& children)
{
    return "<bannedplugins version=\"1.0\"><plugin locator=\"VST|/v/a.so|\" " + attributes + ">" + children +
           "</plugin></bannedplugins>";
}

BanInfo InfoIn(const std::string& text)
{
    return ParseBanList(text, rootName).entries.at(0).info;
}

std::string Written(const BanInfo& info)
{
    BanListFile file;
    file.entries.push_back(
        {PluginLocator(zetaudiofilterhost::TechnologyType::VST, L"/v/a.so"), CleanBan(info), nullptr});
    return WriteBanList(file, rootName);
}

const PluginFailure slow{.kind = Kind::TookTooLong,
                         .phase = ScanPhase::Unload,
                         .limit = std::chrono::milliseconds(1500),
                         .lastOutput = "\"please\" & wait"};
constexpr char throwing[] = R"(<failure kind="threw" phase="query" detail="gave up"/>)";

TEST(FailureElement, EveryKindAndPhaseComesBackAsItWas)
{
    for (int kind = 0; kind <= static_cast<int>(PluginFailure::lastKind); ++kind)
        for (int phase = 0; phase <= static_cast<int>(ScanPhase::Unload); ++phase) {
            const BanInfo ban = BanFor({{.kind = static_cast<Kind>(kind),
                                         .phase = static_cast<ScanPhase>(phase),
                                         .code = kind - 7,
                                         .details = {"one", "", "three", "4.0"}},
                                        slow});
            EXPECT_EQ(InfoIn(Written(ban)), ban) << Written(ban);
        }
}

TEST(FailureElement, StandsInTheFileAsDocumented)
{
    EXPECT_THAT(Written(BanFor({slow})),
                HasSubstr(R"(<failure kind="tooktoolong" phase="unload" milliseconds="1500" )"
                          R"(lastoutput="&quot;please&quot; &amp; wait")"));
    EXPECT_THAT(Written(BanFor({{.kind = Kind::Threw, .phase = ScanPhase::Query, .details = {"gave up"}}})),
                HasSubstr(R"(<failure kind="threw" phase="query" detail="gave up")"));
    EXPECT_THAT(Written(BanFor({slow})),
                HasSubstr("reason=\"took longer than 1.5 seconds while being unloaded"))
        << "an older version reads these words";
    EXPECT_THAT(Written({"a user's own words"}), Not(HasSubstr("<failure")));
}

TEST(FailureElement, WithoutWordsBesideItIsTheReason)
{
    const BanInfo info = InfoIn(FileWith("", throwing));
    EXPECT_EQ(info.failures.size(), 1u);
    EXPECT_EQ(info.reason, "threw an exception (gave up) while being asked what it is");
}

TEST(FailureElement, YieldsToWordsThatAnOlderVersionHasWritten)
{
    const BanInfo info = InfoIn(FileWith("reason=\"crashed (aborted) while being loaded\"", throwing));
    EXPECT_EQ(info.reason, "crashed (aborted) while being loaded");
    EXPECT_EQ(info.failures, PluginFailures());
}

TEST(FailureElement, ThatCannotBeReadLeavesTheWordsAndTheBan)
{
    for (const char* bad :
         {R"(<failure/>)", R"(<failure kind="melted"/>)", R"(<failure kind="crashed" phase="dance"/>)",
          R"(<failure kind="crashed" code="1e9"/>)",
          R"(<failure kind="exited" code="99999999999999999999"/>)",
          R"(<failure kind="tooktoolong" milliseconds="-1"/>)",
          R"(<failure kind="noplugins"/><failure kind="melted"/>)",
          R"(<failure kind="noplugins"/><failure kind="noplugins"/><failure kind="noplugins"/>)"}) {
        const std::string text = FileWith("reason=\"in words\"", bad);
        const BanListFile list = ParseBanList(text, rootName);
        ASSERT_EQ(list.entries.size(), 1u) << bad;
        EXPECT_EQ(list.entries[0].info.reason, "in words") << bad;
        EXPECT_EQ(list.entries[0].info.failures, PluginFailures()) << bad;
        EXPECT_THAT(WriteBanList(list, rootName), HasSubstr("<failure"))
            << "a newer version may understand it";
    }
}

TEST(FailureElement, ANewReasonReplacesTheOldFactsAndKeepsWhatANewerVersionAdded)
{
    BanListFile list = ParseBanList(
        FileWith("colour=\"red\"", std::string(throwing) + "<failure kind=\"melted\"/><note/>"), rootName);
    ASSERT_TRUE(list.entries[0].original);
    list.entries[0].info = CleanBan(BanFor({slow}));
    const std::string text = WriteBanList(list, rootName);
    EXPECT_EQ(InfoIn(text), BanFor({slow}));
    EXPECT_THAT(text, testing::AllOf(HasSubstr("colour=\"red\""), HasSubstr("<note"),
                                     Not(HasSubstr("melted")), Not(HasSubstr("threw"))));
}

TEST(FailureElement, IsWrittenCleanAndOfALengthThatPeopleRead)
{
    const PluginFailure odd{.kind = Kind::CouldNotLoad,
                            .details = {std::string("\xFF\x01 no\0thing", 11), "", "", "", "a fifth"},
                            .lastOutput = std::string(100'000, 'x')};
    const BanInfo cleaned = CleanBan(BanFor({odd, odd, odd}));
    EXPECT_EQ(cleaned.failures.size(), 2u);
    EXPECT_EQ(cleaned.failures[0].details.size(), 4u);
    EXPECT_EQ(InfoIn(Written(cleaned)), cleaned);
    EXPECT_LT(Written(cleaned).size(), 40'000u);
}

} // namespace
} // namespace zetaudiopluginhost
