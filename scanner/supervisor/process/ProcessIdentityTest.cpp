#include "supervisor/process/ProcessIdentity.h"

#include <gtest/gtest.h>
#include <zetcore/process/OwnProcess.h>

namespace zetaudiofilterscan {
namespace {

TEST(ProcessIdentityTest, ARunningProcessStaysTheSame)
{
    const std::uint64_t number = zetcore::process::OwnProcessNumber();
    const auto own = IdentifyProcess(number);
    ASSERT_TRUE(own);
    EXPECT_EQ(own->number, number);
    EXPECT_NE(own->start, 0u);
    EXPECT_EQ(IdentifyProcess(number), own);
}

TEST(ProcessIdentityTest, NoProcessHasSuchANumber)
{
    EXPECT_FALSE(IdentifyProcess(0xFFFFFFF1));
}

} // namespace
} // namespace zetaudiofilterscan
