#include "vst3/ModuleInfoJson.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

#include <zettesting/TemporaryFolder.h>

#include "vst3/Vst3Abi.h"

namespace zetaudiopluginhost::vst3 {
namespace {

using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;

std::string OneClass(const std::string& members)
{
    return "{\"Factory Info\": {\"Vendor\": \"Maker\"}, \"Classes\": [{" + members + "}]}";
}

const std::string effectClass = "\"CID\": \"0a4b1a1044d84e5b93a6c8d700000001\", \"Category\": \"Audio Module "
                                "Class\", \"Name\": \"Tone\", \"Version\": \"1.2\", "
                                "\"Sub Categories\": [\"Fx\", \"EQ\"]";

TEST(ModuleInfoJson, CommentsAndTrailingCommasAreRead)
{
    const Vst3Description description =
        ParseModuleInfo("\xEF\xBB\xBF// made by hand\n{ /* all\nof it */ \"Name\": \"Pack\",\n"
                        "\"Factory Info\": {\"Vendor\": \"Maker // no comment\",},\n"
                        "\"Classes\": [{" +
                        effectClass + ",},],}\n");
    EXPECT_EQ(description.vendor, L"Maker // no comment");
    ASSERT_EQ(description.classes.size(), 1u);
    EXPECT_EQ(description.classes[0].id, L"0A4B1A1044D84E5B93A6C8D700000001");
    EXPECT_EQ(description.classes[0].name, L"Tone");
    EXPECT_EQ(description.classes[0].version, L"1.2");
    EXPECT_EQ(description.classes[0].subCategories, L"Fx|EQ");
}

TEST(ModuleInfoJson, ClassesThatAreNoPluginsAreLeftOut)
{
    const Vst3Description description = ParseModuleInfo(
        "{\"Classes\": [{\"Category\": \"Component Controller Class\", \"Name\": \"Panel\"}, 7, {" +
        effectClass + "}]}");
    ASSERT_EQ(description.classes.size(), 1u);
    EXPECT_EQ(description.classes[0].name, L"Tone");
}

TEST(ModuleInfoJson, WhatIsNoDescriptionIsRefused)
{
    for (const std::string& bad :
         {std::string(), std::string("{"), std::string("[]"), std::string("{}"),
          std::string("{\"Classes\": 3}"), std::string("{\"Classes\": []}"),
          OneClass("\"Category\": \"Audio Module Class\", \"Name\": \"No id\""),
          OneClass("\"Category\": \"Audio Module Class\", \"Name\": \"Bad id\", \"CID\": \"xyz\""),
          OneClass(effectClass) + "rest", std::string(100000, '['),
          std::string("{\"Classes\": [{\"Category\": \"Audio")})
        EXPECT_THROW(ParseModuleInfo(bad), std::runtime_error) << bad.substr(0, 80);
}

TEST(ModuleInfoJson, TextsAreMadeFitForShowing)
{
    const Vst3Description description = ParseModuleInfo(
        OneClass("\"CID\": \"0A4B1A1044D84E5B93A6C8D700000001\", \"Category\": \"Audio Module Class\", "
                 "\"Name\": \" Caf\xE9\\n \", \"Vendor\": 5"));
    EXPECT_EQ(description.classes[0].name, L"Caf\uFFFD");
    EXPECT_EQ(description.classes[0].vendor, L"");
}

TEST(Vst3Description, AModuleWithSeveralClassesGoesByItsFile)
{
    const PluginLocator locator(TechnologyType::VST3, L"/plugins/Pack.vst3");
    const Vst3Description description{
        L"Maker",
        {{L"01", L"Tone", L"Guest", L"1.2", L"Fx|EQ"}, {L"02", L"Pad", L"", L"1.3", L"Instrument|Synth|Fx"}}};
    const auto info = MakeVst3Info(locator, description);
    EXPECT_EQ(info->GetName(), L"Pack");
    EXPECT_EQ(info->GetVendor(), L"Maker");
    EXPECT_EQ(info->GetVersionString(), L"1.2");
    EXPECT_EQ(info->GetUniqueId(), L"01");
    EXPECT_EQ(info->GetCategory(), L"Fx|EQ|Instrument|Synth");
    EXPECT_TRUE(info->HasAnySynth());
    EXPECT_TRUE(info->HasAnyNonSynthEffect());

    const auto single = MakeVst3Info(locator, {L"Maker", {description.classes[0]}});
    EXPECT_EQ(single->GetName(), L"Tone");
    EXPECT_EQ(single->GetVendor(), L"Guest");
    EXPECT_FALSE(single->HasAnySynth());
    const auto instrument = MakeVst3Info(locator, {L"Maker", {description.classes[1]}});
    EXPECT_EQ(instrument->GetVendor(), L"Maker");
    EXPECT_FALSE(instrument->HasAnyNonSynthEffect());
}

} // namespace
} // namespace zetaudiopluginhost::vst3
