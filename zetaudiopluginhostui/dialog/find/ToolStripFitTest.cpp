#include "dialog/find/ToolStripFit.h"

#include <gtest/gtest.h>

namespace zetaudiopluginhostui {
namespace {

TEST(ToolStripFit, AButtonMustEndStrictlyInsideTheSection)
{
    const RectF section{0, 0, 400, 200};
    EXPECT_TRUE(EndsInside({300, 4, 80, 19}, section));
    EXPECT_TRUE(EndsInside({319.5F, 4, 80, 19}, section));
    EXPECT_FALSE(EndsInside({320, 4, 80, 19}, section)) << "ends on the edge";
    EXPECT_FALSE(EndsInside({350, 4, 80, 19}, section));
    EXPECT_FALSE(EndsInside({500, 4, 80, 19}, section));
    EXPECT_TRUE(EndsInside({320, 4, 80, 19}, {10, 0, 400, 200}));
}

TEST(ToolStripFit, AFindControlMustBeginStrictlyBehindTheStrip)
{
    const RectF strip{4, 4, 401, 19};
    EXPECT_TRUE(BeginsBehind({406, 4, 50, 20}, strip));
    EXPECT_FALSE(BeginsBehind({405, 4, 50, 20}, strip)) << "begins on the edge";
    EXPECT_FALSE(BeginsBehind({397, 4, 53, 20}, strip));
    EXPECT_FALSE(BeginsBehind({-20, 4, 53, 20}, strip));
}

} // namespace
} // namespace zetaudiopluginhostui
