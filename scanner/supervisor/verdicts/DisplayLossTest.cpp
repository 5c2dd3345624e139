#include "supervisor/verdicts/DisplayLoss.h"

#include <gtest/gtest.h>

namespace zetaudiofilterscan {
namespace {

TEST(DisplayLoss, IsWhatTheLibrariesThatTalkToDisplaysSayWhenItBreaks)
{
    for (const char* output :
         {"X connection to :0 broken (explicit kill or server shutdown).\r\n",
          "Loading presets\nX connection to localhost:10.0 broken (explicit kill or server shutdown).\r\n\n",
          "XIO:  fatal IO error 11 (Resource temporarily unavailable) on X server \":0\"\r\n"
          "      after 7 requests (7 known processed) with 0 events remaining.\r\n",
          "example: Fatal IO error 104 (Connection reset by peer) on X server :0.\n",
          "The X11 connection broke (error 1). Did the X11 server die?\n",
          "The Wayland connection broke. Did the Wayland compositor die?\n",
          "Gdk-Message: 12:00:00.000: Lost connection to Wayland compositor.\n",
          "Gdk-Message: 12:00:00.000: Error reading events from display: Broken pipe\n",
          "Gdk-Message: 12:00:00.000: Error flushing display: Broken pipe\n",
          "Gdk-Message: 12:00:00.000: Error 71 (Protocol error) dispatching to Wayland display.\n"})
        EXPECT_TRUE(TellsOfLostDisplay(output)) << output;
}

TEST(DisplayLoss, IsNothingElseThatPluginsSay)
{
    for (const char* output :
         {"", "\n", "segfault", "X Error of failed request:  BadWindow (invalid Window parameter)\n",
          "cannot open display: :0\n", "X connection to the amplifier\nbroken cable\n",
          "fatal IO error 5 on disk\n", "the licence server's X connection\n"})
        EXPECT_FALSE(TellsOfLostDisplay(output)) << output;
}

} // namespace
} // namespace zetaudiofilterscan
