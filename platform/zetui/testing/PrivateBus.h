#pragma once

#include <string>

#include <gtest/gtest.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/TemporaryFolder.h>

namespace zetui {

/// A session bus of the test's own.
class PrivateBus
{
  public:
    PrivateBus() { EXPECT_TRUE(daemon.WaitForError("unix:")) << "dbus-daemon does not start"; }
    std::string Address() const { return "unix:path=" + (folder / "bus").string(); }

  private:
    const zettesting::TemporaryFolder folder;
    zettesting::ChildProcess daemon{
        {.program = "/usr/bin/dbus-daemon",
         .arguments = {"--session", "--nofork", "--address=" + Address(), "--print-address=2"},
         .environment = {},
         .folder = {}}};
};

} // namespace zetui
