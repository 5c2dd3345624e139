#include "supervisor/conversation/PluginFiles.h"

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

using Paths = std::vector<std::wstring>;

TEST(WritableList, HoldsTheAbsolutePaths)
{
    EXPECT_EQ(ReadWritableList(""), Paths());
    EXPECT_EQ(ReadWritableList("/one"), Paths{L"/one"});
    EXPECT_EQ(ReadWritableList("/one:/two words"), (Paths{L"/one", L"/two words"}));
    EXPECT_EQ(ReadWritableList(":relative:~/home:/three:"), Paths{L"/three"});
}

} // namespace
} // namespace zetaudiofilterscan
