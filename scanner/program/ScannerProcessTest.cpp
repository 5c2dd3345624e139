#include "ScannerFixture.h"

#include <chrono>
#include <future>

#include <zetaudiopluginhost/BannedPluginManager.h>
#include <zetcore/debug/Trace.h>
#include <zetmarshal/JsonValue.h>
#include <zetmarshal/RPCServer.h>
#include <zetscanprotocol/ScanProtocol.h>
#include <zettesting/Patience.h>
#include <zettransport/SocketTransport.h>

#include "ExitCodes.h"

// The real scanner's life and its answers.
namespace zetaudiofilterscan {
namespace {

using namespace zetcore::serialization;
using namespace zetscanprotocol;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using zetaudiofilterhost::PluginLocator;
using zetaudiofilterhost::TechnologyType;
using zetmarshal::RPCErrorCode;

class ScannerProcess : public ScannerFixture
{
  protected:
    static zettesting::ChildResult Run(std::vector<std::string> arguments)
    {
        return zettesting::ChildProcess::Run({ScannerClient::Program(), std::move(arguments), {}, {}});
    }
};

void ExpectError(const Reply& reply, RPCErrorCode code, const std::wstring& text)
{
    EXPECT_FALSE(reply.closed);
    EXPECT_EQ(reply.errorCode, static_cast<int>(code));
    EXPECT_THAT(reply.errorMessage, HasSubstr(text));
}

TEST_F(ScannerProcess, SaysSoAndEndsWhenNoHostHasStartedIt)
{
    const auto result = Run({});
    EXPECT_EQ(result.exitStatus, exitNoPortBlock);
    EXPECT_THAT(result.error, HasSubstr("there is no host to scan for"));
    EXPECT_EQ(result.output, "");
}

TEST_F(ScannerProcess, SaysSoAndEndsWhenItIsGivenArguments)
{
    const auto result = Run({"--help"});
    EXPECT_EQ(result.exitStatus, exitWrongUsage);
    EXPECT_THAT(result.error,
                AllOf(HasSubstr("starts it without"), HasSubstr("arguments. There is nothing")));
}

TEST_F(ScannerProcess, AWorkerWhoseSupervisorIsNotItsParentEndsAtOnce)
{
    const auto result = Run({"--worker", "3", "4", "1"});
    EXPECT_FALSE(result.timedOut);
}

TEST_F(ScannerProcess, EndsWhenNobodyConnectsInTime)
{
    ScannerClient client(prefs, {{"ZET_DEBUG_DATABASE", "zetaudiofilterscan.ConnectTimeoutSeconds=0.2"}});
    const auto& result = client.Process().Wait();
    EXPECT_EQ(result.exitStatus, exitNobodyConnected);
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

TEST_F(ScannerProcess, DoesNotEndForThatOnceAHostIsThere)
{
    // To it, any time that there is for connecting is long over.
    ScannerClient client(prefs, {{"ZET_FAULT", "supervisor.serving:1:late=3600"}});
    ASSERT_TRUE(client.Open());
    ASSERT_TRUE(client.Connect().Succeeded());
    for (int round = 0; round < 20; ++round)
        ASSERT_TRUE(client.BeginScan({}).Succeeded()) << round;
}

TEST_F(ScannerProcess, DoesEndForThatByTheSameClockWhileItWaits)
{
    ScannerClient client(prefs, {{"ZET_FAULT", "supervisor.waiting:1:late=3600"}});
    EXPECT_EQ(client.Process().Wait().exitStatus, exitNobodyConnected);
}

TEST_F(ScannerProcess, EndsWithItsWorkerWhenTheConnectionCloses)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("good/vst2_synth")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_GE(RunningProcesses().size(), 2U);
    client.Close();
    EXPECT_EQ(client.Process().Wait().exitStatus, exitConnectionClosed);
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

TEST_F(ScannerProcess, EndsAtOnceWhenTheConnectionClosesWhileAPluginHangs)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("bad/loops_forever")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    ASSERT_TRUE(client.GetScanInfo().continues);
    client.Send(BuildScanOneEntity());
    client.Close();
    // Had it waited for the plug-in's time to pass, it would have ended because of the plug-in.
    EXPECT_EQ(client.Process().Wait().exitStatus, exitConnectionClosed);
    EXPECT_THAT(LeftProcesses(), IsEmpty());
    EXPECT_FALSE(std::filesystem::exists(client.BannedPath().string() + ".reasons"));
}

TEST_F(ScannerProcess, GivesUpAHostThatSendsAndSendsWhileAPluginHangs)
{
    // A slow machine may need more than a minute for all that is sent.
    WriteDebugDatabase("zetaudiofilterscan.EntityTimeoutSeconds = 5000\n");
    ScannerClient client(prefs);
    client.StartScan({Plugin("bad/loops_forever")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    client.Send(BuildScanOneEntity());
    const std::string large(std::size_t{12} << 20, 'x');
    for (int i = 0; i < 6; ++i)
        client.Send({beginScanMethod, MakeValue(Array{MakeString(large)})});
    EXPECT_TRUE(client.WaitForClose());
    EXPECT_EQ(client.Process().Wait().exitStatus, exitConnectionClosed);
    EXPECT_FALSE(std::filesystem::exists(client.BannedPath().string() + ".reasons"));
}

TEST_F(ScannerProcess, LeavesNoWorkerBehindWhenItIsKilled)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("bad/loops_forever")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    client.Send(BuildScanOneEntity());
    client.Process().Kill();
    client.Process().Wait();
    EXPECT_THAT(LeftProcesses(), IsEmpty());
}

TEST_F(ScannerProcess, DoesNotEndByTheCtrlCThatItsHostsTerminalSendsIt)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect")});
    client.Process().Interrupt();
    ASSERT_TRUE(client.GetScanInfo().continues);
    EXPECT_TRUE(client.ScanOneEntity().Succeeded());
}

TEST_F(ScannerProcess, ServesOneConnectionOnly)
{
    ScannerClient client(prefs);
    ASSERT_TRUE(client.Open());
    ASSERT_TRUE(client.Connect().Succeeded());
    const auto transport = zettransport::SocketTransport::Create(1);
    const auto second = transport->ClientStart("127.0.0.1", client.Port());
    ASSERT_TRUE(second);
    std::promise<void> closed;
    second->SetCloseCallback([&closed](const std::shared_ptr<zettransport::Session>&) {
        closed.set_value();
        return 0;
    });
    second->Start([](const std::string&) {});
    EXPECT_EQ(closed.get_future().wait_for(zettesting::patience), std::future_status::ready);
    EXPECT_TRUE(client.BeginScan({}).Succeeded());
}

TEST_F(ScannerProcess, RefusesRequestsOutOfOrderAndGoesOn)
{
    ScannerClient client(prefs);
    ASSERT_TRUE(client.Open());
    ExpectError(client.BeginScan({}), RPCErrorCode::OutOfOrder, L"must follow Connect");
    ExpectError(client.Call(BuildGetScanInfo()), RPCErrorCode::OutOfOrder,
                L"must follow BeginScanForPlugins");
    ExpectError(client.ScanOneEntity(), RPCErrorCode::OutOfOrder, L"must follow a GetScanInfo");
    ASSERT_TRUE(client.Connect().Succeeded());
    ExpectError(client.Connect(), RPCErrorCode::OutOfOrder, L"has been done already");
    ExpectError(client.ScanOneEntity(), RPCErrorCode::OutOfOrder, L"must follow a GetScanInfo");
    ASSERT_TRUE(client.BeginScan({Plugin("good/vst2_effect")}).Succeeded());
    ExpectError(client.ScanOneEntity(), RPCErrorCode::OutOfOrder, L"must follow a GetScanInfo");
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    ExpectError(client.ScanOneEntity(), RPCErrorCode::OutOfOrder, L"must follow a GetScanInfo");
    EXPECT_FALSE(client.GetScanInfo().continues);
    ExpectError(client.ScanOneEntity(), RPCErrorCode::OutOfOrder, L"must follow a GetScanInfo");
}

TEST_F(ScannerProcess, RefusesWrongArgumentsAndUnknownMethodsAndGoesOn)
{
    ScannerClient client(prefs);
    ASSERT_TRUE(client.Open());
    ExpectError(client.Call({connectMethod, MakeValue(Array())}), RPCErrorCode::InvalidParams,
                L"takes 6 arguments, not 0");
    Array wrong = std::any_cast<Array>(*BuildConnect(client.ConnectArguments()).arguments);
    wrong[4] = MakeString("true");
    ExpectError(client.Call({connectMethod, MakeValue(wrong)}), RPCErrorCode::InvalidParams,
                L"argument 5 must be a boolean");
    ASSERT_TRUE(client.Connect().Succeeded());
    ExpectError(client.Call({beginScanMethod, MakeValue(Array{MakeValue(Array{MakeString("nonsense")})})}),
                RPCErrorCode::InvalidParams, L"element 1 is no plug-in locator: nonsense");
    ExpectError(client.Call({"com.quorvex.zetaudiofilterscan.Stop", MakeValue(Array())}),
                RPCErrorCode::MethodNotFound, L"Stop");
    ASSERT_TRUE(client.BeginScan({}).Succeeded());
    ExpectError(client.Call({getScanInfoMethod, MakeValue(Array{MakeValue(1LL)})}),
                RPCErrorCode::InvalidParams, L"takes 0 arguments");
    EXPECT_FALSE(client.GetScanInfo().continues);
}

TEST_F(ScannerProcess, ReportsEachPluginAndThenTheEnd)
{
    const std::vector<PluginLocator> locators{Plugin("good/vst2_shell"), Plugin("good/vst3_several_classes")};
    ScannerClient client(prefs);
    client.StartScan(locators);
    for (std::size_t done = 0; done < locators.size(); ++done) {
        for (int asked = 0; asked < 2; ++asked) {
            const ScanInfo info = client.GetScanInfo();
            EXPECT_EQ(info.locator, locators[done]);
            EXPECT_EQ(info.progress, static_cast<std::int32_t>(done));
            EXPECT_EQ(info.total, 2);
            EXPECT_TRUE(info.continues);
        }
        ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    }
    const ScanInfo end = client.GetScanInfo();
    EXPECT_EQ(end.locator, PluginLocator());
    EXPECT_EQ(end.subcomponent, L"");
    EXPECT_EQ(end.progress, 2);
    EXPECT_EQ(end.total, 2);
    EXPECT_FALSE(end.continues);
}

TEST_F(ScannerProcess, ItsRepliesHaveTheDocumentedKeysAndTypes)
{
    const PluginLocator plugin(TechnologyType::VST, L"/gone.so", L"part");
    ScannerClient client(prefs);
    ASSERT_TRUE(client.Open());
    EXPECT_EQ(zetmarshal::ToJson(client.Connect().result), "{}");
    EXPECT_EQ(zetmarshal::ToJson(client.BeginScan({plugin}).result), "{}");
    EXPECT_EQ(zetmarshal::ToJson(client.Call(BuildGetScanInfo()).result),
              "{\"value\":{\"continue\":true,\"locator\":\"VST|/gone.so|part\",\"progress\":0,"
              "\"subcomponent\":\" (part)\",\"total\":1}}");
    EXPECT_EQ(zetmarshal::ToJson(client.ScanOneEntity().result), "{}");
    EXPECT_EQ(zetmarshal::ToJson(client.Call(BuildGetScanInfo()).result),
              "{\"value\":{\"continue\":false,\"locator\":\"\",\"progress\":1,\"subcomponent\":\"\","
              "\"total\":1}}");
}

TEST_F(ScannerProcess, HasNothingToDoForAnEmptyList)
{
    ScannerClient client(prefs);
    client.StartScan({});
    const ScanInfo info = client.GetScanInfo();
    EXPECT_FALSE(info.continues);
    EXPECT_EQ(info.total, 0);
}

TEST_F(ScannerProcess, StartsOverWithASecondList)
{
    ScannerClient client(prefs);
    client.StartScan({Plugin("good/vst2_effect"), Plugin("good/vst2_synth")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    ASSERT_TRUE(client.BeginScan({Plugin("good/vst3_single_file")}).Succeeded());
    const ScanInfo info = client.GetScanInfo();
    EXPECT_EQ(info.locator, Plugin("good/vst3_single_file"));
    EXPECT_EQ(info.progress, 0);
    EXPECT_EQ(info.total, 1);
    EXPECT_TRUE(client.ScanOneEntity().Succeeded());
}

TEST_F(ScannerProcess, PassesOverBannedPluginsWithAnEmptyResult)
{
    zetaudiopluginhost::BannedPluginManager banned;
    banned.AddBannedPlugin(Plugin("bad/crash_on_load"), "for a test");
    ScannerClient client(prefs);
    banned.SaveConfiguration(zetcore::filesupport::File(zettesting::ToWide(client.BannedPath())));
    client.StartScan({Plugin("bad/crash_on_load"), Plugin("good/vst2_effect")});
    EXPECT_EQ(client.GetScanInfo().locator, Plugin("bad/crash_on_load"));
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_EQ(zettesting::ReadAll(client.ResultPath()), "");
    EXPECT_EQ(client.GetScanInfo().progress, 1);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), HasSubstr("vst2_effect"));
}

TEST_F(ScannerProcess, LeavesDamagedListsOfTheHostWhereTheyAre)
{
    ScannerClient client(prefs);
    zettesting::WriteAll(client.BannedPath(), "<bannedplugins><plugin");
    zettesting::WriteAll(client.PermanentBannedPath(), "nonsense");
    zettesting::WriteAll(client.SettingsPath(), "<damaged");
    client.StartScan({Plugin("good/vst2_effect")});
    ASSERT_TRUE(client.GetScanInfo().continues);
    ASSERT_TRUE(client.ScanOneEntity().Succeeded());
    EXPECT_EQ(zettesting::ReadAll(client.BannedPath()), "<bannedplugins><plugin");
    EXPECT_EQ(zettesting::ReadAll(client.PermanentBannedPath()), "nonsense");
    EXPECT_EQ(zettesting::ReadAll(client.SettingsPath()), "<damaged");
    EXPECT_FALSE(std::filesystem::exists(client.BannedPath().string() + ".damaged"));
    for (const auto& entry : std::filesystem::directory_iterator(folder / "runtime"))
        EXPECT_TRUE(!entry.is_directory() ||
                    entry.path().filename().string().starts_with("zetaudiofilterscan-home-"))
            << entry.path();
}

TEST_F(ScannerProcess, RequestsThatComeAllAtOnceAreAnsweredInOrder)
{
    ScannerClient client(prefs);
    ASSERT_TRUE(client.Open());
    client.Send(BuildConnect(client.ConnectArguments()));
    client.Send(BuildBeginScanForPlugins({Plugin("good/vst2_effect")}));
    client.Send(BuildGetScanInfo());
    client.Send(BuildScanOneEntity());
    EXPECT_FALSE(client.GetScanInfo().continues);
    EXPECT_THAT(zettesting::ReadAll(client.ResultPath()), HasSubstr("vst2_effect"));
}

TEST_F(ScannerProcess, ALongScanStaysInOneScanner)
{
    const auto made = folder / "made";
    std::filesystem::create_directory(made);
    std::vector<PluginLocator> locators;
    for (const auto& file : zettesting::CopyTestPlugin("good/vst2_effect", made, 200))
        locators.push_back(LocatorOf(file));
    const WholeScan scan = ScanAll(prefs, locators);
    EXPECT_EQ(scan.scannersStarted, 1);
    EXPECT_EQ(scan.reported.size(), 200U);
    EXPECT_THAT(scan.results, HasSubstr("copy00199"));
}

} // namespace
} // namespace zetaudiofilterscan
