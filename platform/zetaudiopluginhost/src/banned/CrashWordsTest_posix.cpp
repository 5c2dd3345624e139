#include "banned/CrashWords.h"

#include <csignal>

#include <gtest/gtest.h>
#include <zetaudiopluginhost/PluginFailure.h>

namespace zetaudiopluginhost {
namespace {

using zetcore::config::Localizer;

TEST(CrashWords, NameTheSignal)
{
    EXPECT_EQ(
        WordFailures({{.kind = PluginFailure::Kind::Crashed, .phase = ScanPhase::Load, .code = SIGSEGV}}),
        "crashed (segmentation fault) while being loaded");
    EXPECT_EQ(CrashWords(SIGABRT, Localizer()), "aborted");
    EXPECT_EQ(CrashWords(SIGBUS, Localizer()), "bus error");
    EXPECT_EQ(CrashWords(SIGFPE, Localizer()), "arithmetic error");
    EXPECT_EQ(CrashWords(SIGUSR1, Localizer()), "signal " + std::to_string(SIGUSR1));
}

TEST(CrashWords, AreTheLanguages)
{
    Localizer german;
    german.LoadTableFromText("\"$$$/AudioPluginManager/Crash/Aborted\"=\"abgebrochen\"", "de");
    EXPECT_EQ(CrashWords(SIGABRT, german), "abgebrochen");
}

} // namespace
} // namespace zetaudiopluginhost
