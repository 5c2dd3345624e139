#include "scan/ScanTrace.h"

#include <zetcore/debug/Trace.h>
#include <zettesting/HostFixture.h>

namespace zetaudiopluginhostui {
namespace {

class ScanTrace : public zettesting::HostFixture
{
  protected:
    ScanTraceSite site;
};

TEST_F(ScanTrace, ALineIsItsPartsAndALineEndAtLevel6)
{
    zetcore::debug::SetMasterTraceVolume(6);
    site.Write("port: ", 4711);
    EXPECT_EQ(*traceLines, std::vector<std::string>{"6 ExternalAudioPluginScan port: 4711\r\n"});
}

TEST_F(ScanTrace, NothingIsWrittenBelowLevel6OrWithTheCategoryOff)
{
    zetcore::debug::SetMasterTraceVolume(5);
    site.Write("too quiet");
    zetcore::debug::SetMasterTraceVolume(9);
    zetcore::debug::SetTraceCategoryEnabled("ExternalAudioPluginScan", false);
    site.Write("off");
    EXPECT_TRUE(traceLines->empty());
}

TEST_F(ScanTrace, ASiteFollowsEveryChangeOfTheConfiguration)
{
    site.Write("1");
    zetcore::debug::SetMasterTraceVolume(6);
    site.Write("2");
    zetcore::debug::SetMasterTraceVolume(0);
    site.Write("3");
    zetcore::debug::SetMasterTraceVolume(7);
    site.Write("4");
    site.Write("5");
    EXPECT_EQ(*traceLines,
              (std::vector<std::string>{"6 ExternalAudioPluginScan 2\r\n", "6 ExternalAudioPluginScan 4\r\n",
                                        "6 ExternalAudioPluginScan 5\r\n"}));
}

int questions = 0;
std::string lastQuestion;

bool Count(std::string_view category, int level, bool defaultOn)
{
    ++questions;
    lastQuestion = std::string(category) + " " + std::to_string(level) + (defaultOn ? " on" : " off");
    return zetcore::debug::TraceEnabled(category, level, defaultOn);
}

TEST_F(ScanTrace, ASiteAsksOnceForEachChangeOfTheConfigurationWhateverTheAnswer)
{
    questions = 0;
    ScanTraceSite counting(Count);
    for (const int volume : {0, 6, 5}) {
        zetcore::debug::SetMasterTraceVolume(volume);
        const int before = questions;
        counting.Write("1");
        counting.Write("2");
        EXPECT_EQ(questions, before + 1) << volume;
    }
    EXPECT_EQ(lastQuestion, "ExternalAudioPluginScan 6 on");
    EXPECT_EQ(traceLines->size(), 2u);
}

TEST_F(ScanTrace, EachSiteAsksForItself)
{
    zetcore::debug::SetMasterTraceVolume(6);
    questions = 0;
    ScanTraceSite first(Count);
    ScanTraceSite second(Count);
    first.Write("1");
    second.Write("2");
    EXPECT_EQ(questions, 2);
    EXPECT_EQ(traceLines->size(), 2u);
}

} // namespace
} // namespace zetaudiopluginhostui
