#include "OneProcessor.h"

#include <optional>

#include <gtest/gtest.h>
#include <sched.h>

namespace zetaudiofilterscan {
namespace {

cpu_set_t OwnProcessors()
{
    cpu_set_t processors;
    EXPECT_EQ(::sched_getaffinity(0, sizeof processors, &processors), 0);
    return processors;
}

TEST(OneProcessor, IsAllThereIsUntilTheObjectEnds)
{
    const cpu_set_t before = OwnProcessors();
    std::optional<OneProcessor> oneProcessor(std::in_place);
    const cpu_set_t during = OwnProcessors();
    oneProcessor.reset();
    const cpu_set_t after = OwnProcessors();
    EXPECT_EQ(CPU_COUNT(&during), 1);
    EXPECT_TRUE(CPU_EQUAL(&before, &after));
}

} // namespace
} // namespace zetaudiofilterscan
