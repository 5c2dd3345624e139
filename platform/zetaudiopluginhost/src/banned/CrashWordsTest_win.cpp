#include "banned/CrashWords.h"

#include <gtest/gtest.h>
#include <zetaudiopluginhost/PluginFailure.h>

#include <windows.h>

namespace zetaudiopluginhost {
namespace {

using zetcore::config::Localizer;

TEST(CrashWords, NameTheException)
{
    EXPECT_EQ(WordFailures({{.kind = PluginFailure::Kind::Crashed,
                             .phase = ScanPhase::Load,
                             .code = static_cast<std::int64_t>(EXCEPTION_ACCESS_VIOLATION)}}),
              "crashed (access violation) while being loaded");
    EXPECT_EQ(CrashWords(EXCEPTION_STACK_OVERFLOW, Localizer()), "stack overflow");
    EXPECT_EQ(CrashWords(EXCEPTION_INT_DIVIDE_BY_ZERO, Localizer()), "arithmetic error");
    EXPECT_EQ(CrashWords(0x40000015, Localizer()), "aborted");
    EXPECT_EQ(CrashWords(0xE06D7363, Localizer()), "uncaught exception");
    EXPECT_EQ(CrashWords(0xC0001234, Localizer()), "exception 0xc0001234");
}

} // namespace
} // namespace zetaudiopluginhost
