#include "vst2/ShellNames.h"

#include <gtest/gtest.h>

namespace zetaudiopluginhost::vst2 {
namespace {

TEST(ShellNames, MarkersReadAlikeAndLetterCaseIsApart)
{
    const std::wstring shell = ShellComparisonName(L"/vst/WaveHouse-VST 12.so");
    EXPECT_EQ(ShellComparisonName(L"/vst3/wavehouse-vst3 12.vst3"), shell);
    EXPECT_EQ(ShellComparisonName(L"/vst/WaveHouse-VST2 12.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/vst/WaveHouse-VST 13.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/vst/WaveHouse-VST 12 More.so"), shell);
    EXPECT_NE(ShellComparisonName(L"/a/VST30.so"), ShellComparisonName(L"/a/VST20.so"));
}

} // namespace
} // namespace zetaudiopluginhost::vst2
