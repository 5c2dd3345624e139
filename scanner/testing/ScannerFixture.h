#pragma once

#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zettesting/ChildProcess.h>
#include <zettesting/HostFixture.h>
#include <zettesting/NoDisplay.h>
#include <zettesting/TestPlugins.h>

#include "ScannerClient.h"

namespace zetaudiofilterscan {

/// For tests with the real scanner, which see no display of the machine. Every test ends with the proof that
/// no scanner and no worker is left.
class ScannerFixture : public zettesting::HostFixture
{
  protected:
    ~ScannerFixture() override { EXPECT_THAT(LeftProcesses(), testing::IsEmpty()); }

    /// The scanner's processes that still run after a while; the runtime folder is this test's alone.
    std::vector<std::string> LeftProcesses() const
    {
        return zettesting::WaitForProcessesToEnd((folder / "runtime").string());
    }
    /// The scanner's processes that run now.
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
    /// The logs of all scanners, with the plug-ins' output.
    std::string ScanLogs() const
    {
        std::string logs;
        if (std::filesystem::exists(prefs / "scan-logs"))
            for (const auto& entry : std::filesystem::directory_iterator(prefs / "scan-logs"))
                logs += zettesting::ReadAll(entry.path());
        return logs;
    }

  private:
    zettesting::NoDisplay noDisplay;
};

} // namespace zetaudiofilterscan
