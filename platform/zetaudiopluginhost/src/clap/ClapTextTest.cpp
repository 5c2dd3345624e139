#include "clap/ClapText.h"

#include <algorithm>
#include <array>

#include <gmock/gmock.h>

namespace zetaudiopluginhost::clap {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(ClapText, TextsAreFitForShowingAndMayBeMissing)
{
    EXPECT_EQ(Text(nullptr), L"");
    EXPECT_EQ(Text(""), L"");
    EXPECT_EQ(Text(" Caf\xC3\xA9\n"), L"Caf\u00E9");
    EXPECT_EQ(Text("Caf\xE9"), L"Caf\uFFFD");
    EXPECT_EQ(Bytes(nullptr), "");
    EXPECT_EQ(Bytes(" Caf\xE9\n"), " Caf\xE9\n");
}

TEST(ClapText, ATextWithoutAnEndIsReadOnlySoFar)
{
    std::array<char, 4096> endless{};
    endless.fill('n');
    EXPECT_EQ(Bytes(endless.data()).size(), 1024u);
    EXPECT_EQ(Text(endless.data()), std::wstring(255, L'n'));
    // The longest text that is shown whole has four bytes for each of its characters.
    std::string longest;
    for (int i = 0; i < 255; ++i)
        longest += "\xF0\x9D\x84\x9E";
    EXPECT_EQ(Bytes(longest.c_str()), longest);
}

TEST(ClapText, FeaturesEndWithANullAndMayBeMissing)
{
    const char* const features[] = {"instrument", "caf\xE9", nullptr, "behind the end"};
    EXPECT_THAT(Features(features), ElementsAre(L"instrument", L"caf\uFFFD"));
    EXPECT_THAT(Features(features + 2), IsEmpty());
    EXPECT_THAT(Features(nullptr), IsEmpty());
    std::array<const char*, 4096> endless{};
    endless.fill("delay");
    EXPECT_EQ(Features(endless.data()).size(), 64u);
}

TEST(ClapText, TheCategoryHasEachFeatureOnce)
{
    EXPECT_EQ(CategoryText({}), L"");
    EXPECT_EQ(CategoryText({L"audio-effect", L"delay", L"", L"audio-effect", L"stereo"}),
              L"audio-effect|delay|stereo");
    EXPECT_EQ(CategoryText({std::wstring(200, L'a'), std::wstring(100, L'b'), L"stereo"}),
              std::wstring(200, L'a') + L"|stereo");
}

TEST(ClapText, VersionsOfOurMajorNumberAreKnown)
{
    EXPECT_TRUE(IsKnown({1, 0, 0}));
    EXPECT_TRUE(IsKnown({1, 99, 7}));
    EXPECT_FALSE(IsKnown({0, 26, 3}));
    EXPECT_FALSE(IsKnown({2, 0, 0}));
    EXPECT_EQ(VersionText({0, 26, 3}), "0.26.3");
}

} // namespace
} // namespace zetaudiopluginhost::clap
