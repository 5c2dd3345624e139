#include <zetcore/utility/Fnv1a.h>

#include <gtest/gtest.h>

namespace zetcore::utility {
namespace {

TEST(Fnv1a, IsTheKnownValueOfKnownBytes)
{
    struct Case
    {
        std::string_view bytes;
        std::uint64_t hash;
    };
    // These are the published values.
    for (const Case& each :
         {Case{"", 0xcbf29ce484222325}, Case{"a", 0xaf63dc4c8601ec8c}, Case{"b", 0xaf63df4c8601f1a5},
          Case{"foobar", 0x85944171f73967e8}, Case{std::string_view("\0", 1), 0xaf63bd4c8601b7df},
          Case{"\x80", 0xaf643d4c8602915f}, Case{"\xFF", 0xaf64724c8602eb6e},
          Case{"\xC3\xA9", 0x0ac21707b7181e01}, Case{std::string_view("\xFF\0\0\1", 4), 0x6961196491cc682d}})
        EXPECT_EQ(Fnv1a(each.bytes), each.hash) << each.bytes;
    EXPECT_NE(Fnv1a("ab"), Fnv1a("ba"));
    EXPECT_NE(Fnv1a("\xFF"), Fnv1a("\x7F"));
}

} // namespace
} // namespace zetcore::utility
