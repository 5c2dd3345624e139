#include "ScannerFixture.h"

namespace zetaudiofilterscan {
namespace {

using testing::IsEmpty;

// The fixture proves, too, that no process of the scanner's is left.
class PluginThatLeavesAProcess : public ScannerFixture
{
  protected:
    void Scan(ScannerClient& client)
    {
        // With the first one, which loads nothing, all of the scanner's own processes are there.
        client.StartScan(
            {LocatorOf(zettesting::MakeTextModule(folder.Path())), LocatorOf(ZET_LEAVES_PROCESS_PLUGIN)});
        ASSERT_TRUE(client.GetScanInfo().goesOn);
        ASSERT_TRUE(client.Call("ScanOneEntity").Succeeded());
        ASSERT_TRUE(client.GetScanInfo().goesOn);
        const auto before = RunningProcesses().size();
        ASSERT_TRUE(client.Call("ScanOneEntity").Succeeded());
        ASSERT_EQ(RunningProcesses().size(), before + 1);
    }
};

TEST_F(PluginThatLeavesAProcess, has_it_ended_with_the_connection)
{
    ScannerClient client(prefs);
    Scan(client);
    client.Close();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

TEST_F(PluginThatLeavesAProcess, has_it_ended_when_the_supervisor_is_killed)
{
    ScannerClient client(prefs);
    Scan(client);
    client.Process().Kill();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

} // namespace
} // namespace zetaudiofilterscan
