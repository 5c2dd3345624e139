#include <zetui/pixmill/Path.h>

#include <string>

#include <gtest/gtest.h>
#include <zetcore/utility/NullPtrException.h>
#include <zetui/pixmill/SupplierInterface.h>

namespace zetui::pixmill {
namespace {

using Segments = std::vector<Path::Segment>;

constexpr Path::Segment left{1, 8, 1, 3}, top{1, 3, 5, 3}, right{5, 3, 5, 8}, bottom{5, 8, 1, 8};

TEST(FormRect, AddsTheChosenEdges)
{
    struct Case
    {
        utils::FourEdgeTupleT<bool> edges;
        Segments expected;
    };
    for (const Case& one :
         {Case{{true, true, true, true}, {left, top, right, bottom}}, Case{{false, false, false, false}, {}},
          Case{{true, false, false, false}, {left}}, Case{{false, true, false, false}, {top}},
          Case{{false, false, true, false}, {right}}, Case{{false, false, false, true}, {bottom}}}) {
        const PathP path = DefaultSupplier().CreatePath();
        utils::FormRect(path, {1, 3, 4, 5}, one.edges);
        EXPECT_EQ(path->Segments(), one.expected);
    }
}

TEST(FormRect, ContinuesAPath)
{
    const PathP path = DefaultSupplier().CreatePath();
    path->AddLine(0, 0, 9, 9);
    utils::FormRect(path, {1, 3, 4, 5}, {true, false, false, false});
    EXPECT_EQ(path->Segments(), (Segments{{0, 0, 9, 9}, left}));
}

TEST(FormRect, NamesTheMissingPath)
{
    try {
        utils::FormRect(nullptr, {0, 0, 1, 1}, {true, true, true, true});
        FAIL() << "no error";
    } catch (const zetcore::utility::null_ptr_exception& error) {
        EXPECT_NE(std::string(error.what()).find("PathP"), std::string::npos) << error.what();
    }
}

} // namespace
} // namespace zetui::pixmill
