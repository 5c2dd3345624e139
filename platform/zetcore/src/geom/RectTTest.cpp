#include <zetcore/geom/RectT.h>

#include <type_traits>

#include <gtest/gtest.h>

namespace zetcore::geom {
namespace {

static_assert(std::is_trivially_copyable_v<RectT<int>>);
static_assert(sizeof(RectT<int>) == 4 * sizeof(int));

TEST(RectT, IsZeroByDefaultAndComparesByItsFields)
{
    EXPECT_EQ(RectT<int>(), (RectT<int>{0, 0, 0, 0}));
    const RectT<int> rect{1, 2, 3, 4};
    EXPECT_EQ(rect.left, 1);
    EXPECT_EQ(rect.top, 2);
    EXPECT_EQ(rect.width, 3);
    EXPECT_EQ(rect.height, 4);
    EXPECT_NE(rect, (RectT<int>{1, 2, 3, 5}));
}

} // namespace
} // namespace zetcore::geom
