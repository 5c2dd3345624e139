#pragma once

#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/HostFixture.h>
#include <zettesting/TestPlugins.h>

#include "ScannerClient.h"

namespace zetaudiofilterscan {

/// For tests with the real scanner. Every test ends with the proof that no scanner and no worker is left.
class ScannerFixture : public zettesting::HostFixture
{
  protected:
    ~ScannerFixture() override { EXPECT_THAT(LeftProcesses(), testing::IsEmpty()); }

    /// The scanner's processes that still run after a while; the runtime folder is this test's alone.
    std::vector<std::string> LeftProcesses() const
    {
        return zettesting::WaitForProcessesToEnd((folder / "runtime").string());
    }
    /// Those that run now.
    std::vector<std::string> RunningProcesses() const
    {
        return zettesting::ProcessesWithEnvironment((folder / "runtime").string());
    }
    static zetaudiofilterhost::PluginLocator Plugin(std::string_view name)
    {
        return LocatorOf(zettesting::TestPlugin(name));
    }
    void WriteDebugDatabase(std::string_view text) const
    {
        zettesting::WriteAll(prefs / "DebugDatabase.txt", text);
    }
};

} // namespace zetaudiofilterscan
