#pragma once

#include <gmock/gmock.h>
#include <zetcore/debug/DebugDatabase.h>
#include <zetcore/process/OwnProcess.h>
#include <zetscanprotocol/ScanRelay.h>
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
    /// With one worker plug-ins are scanned, and told, in the order of the list.
    explicit ScannerFixture(int workersAtOnce = 1) : workers(workersAtOnce) { WriteDebugDatabase(""); }
    ~ScannerFixture() override
    {
        EXPECT_THAT(LeftProcesses(), testing::IsEmpty());
        // A host does so after its scan. On Windows a program's tests are one process, with one runtime
        // folder.
        zetscanprotocol::DeleteRelayOf(zetcore::process::OwnProcessNumber());
    }

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
    /// Lines beside the number of workers.
    void WriteDebugDatabase(const std::string& text) const
    {
        zettesting::WriteAll(prefs / "DebugDatabase.txt",
                             "zetaudiofilterscan.Workers = " + std::to_string(workers) + "\n" + text);
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

    const int workers;

  private:
    zettesting::NoDisplay noDisplay;
};

} // namespace zetaudiofilterscan
