// A plug-in that damages the heap for the next one. The test runs only where the structure of the heap is
// known.
#include <gmock/gmock.h>

#include "ManagerFixture.h"

namespace {

using testing::AllOf;
using testing::HasSubstr;
using Strings = std::vector<std::string>;

#if defined(__GLIBC__) && !defined(ZET_SANITIZED)
constexpr bool heapCanBeDamaged = true;
#else
constexpr bool heapCanBeDamaged = false;
#endif

class HeapDamage : public ManagerFixture
{};

TEST_F(HeapDamage, TheNextOneIsNotBannedAndTheLogNamesTheOneThatDidIt)
{
    Install("bad/damages_heap", "a_damages");
    Install("bad/uses_heap", "b_uses");
    Install("good/vst2_effect", "c_effect");
    const ScanSummary summary = Scan({"--jobs", "1"});
    EXPECT_EQ(summary.exitStatus, 0) << summary.messages;
    EXPECT_EQ(summary.banned, Strings());
    EXPECT_EQ(ListedPaths({"--enabled"}).size(), 3u);
    if (heapCanBeDamaged) {
        EXPECT_THAT(ScanLogs(),
                    AllOf(HasSubstr("b_uses"), HasSubstr("loaded before it in the same process: VST|"),
                          HasSubstr("a_damages"), HasSubstr("passed when it was alone")));
    }
}

TEST_F(HeapDamage, OutOfOrderItHurtsNobody)
{
    Install("bad/uses_heap", "a_uses");
    Install("bad/damages_heap", "b_damages");
    EXPECT_EQ(Scan().banned, Strings());
    EXPECT_EQ(ListedPaths({"--enabled"}).size(), 2u);
}

} // namespace
